#pragma once

#include "QnXmlLib16/binding/ElementInfoBase.h"

namespace QnXmlLib16 {
class CXmlCollectionBase;
}

namespace QnXmlLib16Data {

// The rules that the leaves of the family join to their kind of content, each in one place. Nested,
// so that it reaches what the leaves reach.
//
// Reading takes from *ReadCall::ppCursor, which moves only when something was taken or skipped. An
// InSequence rule answers as a sequence asks: true once the entry has done with its place. The
// other rules answer whether they read something, which is what an all group and a choice ask; an
// optional member of a sequence does the same and passes by any answer.
struct CElementInfo::Steps
{
    // The arguments of ElementFromXml.
    struct ReadCall
    {
        const CSerializationContext& context;
        CXmlGeneratedClass* pObject;
        CXmlElement* pParent;
        CXmlElement** ppCursor;
        const char* pszNamespace;
        XmlElementType ownerType;
    };

    // Reads the value of an element into the property, and moves on.
    using ValueReader = void (CElementInfo::*)(const CSerializationContext&, CXmlGeneratedClass*,
                                               CXmlElement**) const;
    static constexpr ValueReader kPrim = &CElementInfo::ElementFromXmlPrim;
    static constexpr ValueReader kEnum = &CElementInfo::ElementFromXmlEnum;

    // Where a new child comes from.
    class Maker
    {
    public:
        // A child of one class: an answer of null is a failure.
        Maker(CreateFunction fnCreate, int nClassId) : m_fnCreate(fnCreate), m_nClassId(nClassId) {}
        // A child of the class that the element stands for, null if there is none.
        explicit Maker(CreateFromElementFunction fnCreate) : m_fnCreateFromElement(fnCreate) {}

        CSmartPtr<CXmlObjectBase> Make(const CElementInfo& info, CXmlElement* pElement) const;

    private:
        CreateFunction m_fnCreate = nullptr;
        int m_nClassId = 0;
        CreateFromElementFunction m_fnCreateFromElement = nullptr;
    };

    // Lets a collection read from the cursor on; the first element that it did not take.
    using ItemReader = CXmlElement* (*)(const CElementInfo&, const ReadCall&, CXmlCollectionBase&);
    static CXmlElement* ReadItems(const CElementInfo& info, const ReadCall& call,
                                  CXmlCollectionBase& collection);
    // For a CElementCol: elements of the entry's name only, unless that is "AnyElement".
    static CXmlElement* ReadElements(const CElementInfo& info, const ReadCall& call,
                                     CXmlCollectionBase& collection);

    // Values.
    static bool MandatoryValueInSequence(const CElementInfo& info, const ReadCall& call,
                                         ValueReader read);
    // Here, since it runs once for every value member of every object, most often in vain.
    static bool Value(const CElementInfo& info, const ReadCall& call, ValueReader read)
    {
        if (!*call.ppCursor || !info.IsThisElement(call.context, *call.ppCursor))
            return false;
        (info.*read)(call.context, call.pObject, call.ppCursor);
        return true;
    }

    // Child objects. A held child is read in place, a new one is assigned once it has been read, a
    // selected one before.
    static bool HeldChildInSequence(const CElementInfo& info, const ReadCall& call,
                                    XmlElementType childType, bool bRequiredContent);
    static bool HeldChild(const CElementInfo& info, const ReadCall& call, XmlElementType childType);
    static bool SubstituteInSequence(const CElementInfo& info, const ReadCall& call,
                                     const Maker& maker);
    static bool NewChild(const CElementInfo& info, const ReadCall& call, XmlElementType childType,
                         const Maker& maker);
    // bOptionalChoice lets a child with an element of its own that is a choice be empty.
    static bool SelectedChild(const CElementInfo& info, const ReadCall& call,
                              XmlElementType childType, const Maker& maker, bool bOptionalChoice);

    // Wildcards.
    static bool HeldWildcardInSequence(const CElementInfo& info, const ReadCall& call);
    static bool HeldWildcard(const CElementInfo& info, const ReadCall& call);
    static bool NewWildcard(const CElementInfo& info, const ReadCall& call,
                            const std::string& strAnyNamespaces,
                            const std::string& strTargetNamespace);

    // Collections.
    static bool CollectionInSequence(const CElementInfo& info, const ReadCall& call,
                                     ItemReader read);
    static bool CollectionInAll(const CElementInfo& info, const ReadCall& call);
    static bool CollectionInChoice(const CElementInfo& info, const ReadCall& call, ItemReader read);

    // The end of an all group: a member that has to be there.
    static bool ValidateMandatory(const CElementInfo& info, bool bWasRead, bool bIsRealElement);

    // Writing. What a mandatory member has written, or a failure if that is nothing.
    static bool Mandatory(const CElementInfo& info, bool bWritten);
    // The items of a collection, if their number is right.
    static bool WriteCheckedCollection(const CElementInfo& info,
                                       const CSerializationContext& context,
                                       const CXmlGeneratedClass* pObject, CXmlWriter* pWriter);
    // The attributes of a child, or of each item of a collection, that is a pseudo element.
    static void WritePseudoAttributes(const CElementInfo& info, XmlElementType childType,
                                      const CSerializationContext& context,
                                      const CXmlGeneratedClass* pObject, CXmlWriter* pWriter);

private:
    static bool SeekMandatory(const CElementInfo& info, const ReadCall& call);
    static bool SeekInGroup(const CElementInfo& info, const ReadCall& call);
    static void ReadChildElement(CXmlObjectBase& child, const ReadCall& call, bool bOptionalChoice);
    static void Assign(const CElementInfo& info, const ReadCall& call, CXmlObjectBase* pChild,
                       const CXmlElement& element);
    static CXmlObjectBase& HeldObject(const CElementInfo& info, const QnVariant& value);
    static CXmlCollectionBase& HeldCollection(const CElementInfo& info, const QnVariant& value);
    static bool AdmitsName(const CElementInfo& info, const CXmlElement& element);
    [[noreturn]] static void ThrowEmptyProperty(const CElementInfo& info);
    [[noreturn]] static void ThrowNotFound(const CElementInfo& info, const ReadCall& call);
};

} // namespace QnXmlLib16Data
