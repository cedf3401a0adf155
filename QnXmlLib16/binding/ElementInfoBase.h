#pragma once

#include "QnXmlLib16/binding/ElementTypes.h"
#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/support/SmartPtr.h"
#include "QnXmlLib16/validation/PrimitiveRestrictions.h"
#include "QnXmlLib16/validation/WhitespaceUtils.h"
#include "QnXmlLib16/values/ItemType.h"

#include <string>

namespace QnXmlLib16 {
class CQnException;
class CSerializationContext;
class CXmlCollectionBase;
class CXmlElement;
class CXmlGeneratedClass;
class CXmlObjectBase;
class CXmlWriter;
class QnVariant;
} // namespace QnXmlLib16

namespace QnXmlLib16Data {

// Describes one child element of a generated class: how to find it, how to read it into the
// class's property and how to write it back. Generated code makes one of a subclass for each child,
// in schema order. Objects never change once built and may be shared by any number of threads.
//
// Subclasses are named group, kind and cardinality: Seq, All or Choice, the group of the owning
// class; Prim (a value of an ItemType), Enum (an int with two functions for its text), Cls (an
// object of a generated class), AbsCls (an object whose class the document decides) or Untpd
// (wildcard content); Mnd (exactly one), Opt (at most one) or Col (a collection with bounds).
class QNXML_API CElementInfo
{
public:
    // Makes a new child from its class id and its element name.
    using CreateFunction = CSmartPtr<CXmlObjectBase> (*)(int, const char*);
    // Makes a new child of the class that the element stands for, null if there is none.
    using CreateFromElementFunction = CSmartPtr<CXmlObjectBase> (*)(CXmlElement*);

    // For the kinds that hold an object.
    CElementInfo(const char* pszName, const char* pszNamespace, int nProperty);
    // For enumerations. A null default is none.
    CElementInfo(const char* pszName, const char* pszNamespace, int nProperty, bool bNillable,
                 const char* (*fnEnumToString)(int), int (*fnStringToEnum)(const char*),
                 const char* pszDefault);
    // For primitives. A null format or default is none.
    CElementInfo(const char* pszName, const char* pszNamespace, int nProperty, bool bNillable,
                 ItemType itemType, const char* pszFormat,
                 CWhitespaceUtils::WhitespaceRule whitespace,
                 const CPrimitiveRestrictions& restrictions, const char* pszDefault);
    CElementInfo(const CElementInfo&) = delete;
    CElementInfo& operator=(const CElementInfo&) = delete;
    virtual ~CElementInfo();

    // Writes the property's value; true if something was written. Throws CQnException and its
    // family for a value that is missing or breaks its facets.
    virtual bool ElementToXml(const CSerializationContext& context,
                              const CXmlGeneratedClass* pObject, CXmlWriter* pWriter) const = 0;

    // Reads from *ppCursor on, which may be null, and moves it past what was read. pParent is the
    // element that the owner stands for, pszNamespace the owner's GetNamespace(), ownerType the
    // kind of the owner. True if this entry has finished with its place in the group, though an
    // optional element was absent; false if it does not match: where the owner is a pseudo
    // element nothing fails for want of a match.
    virtual bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                                CXmlElement* pParent, CXmlElement** ppCursor,
                                const char* pszNamespace, XmlElementType ownerType) = 0;

    // Whether an all group may end with this entry as it is. Only entries of all groups can tell:
    // the others throw CQnException "Not implemented, should never be called".
    virtual bool Validate(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                          bool bWasRead, bool bIsRealElement) const;

    // Writes the attributes of a pseudo child into its parent's element. Empty here.
    virtual void PseudoChildAttributeToXml(const CSerializationContext& context,
                                           const CXmlGeneratedClass* pObject,
                                           CXmlWriter* pWriter) const;

    // Whether pElement, which may be null, goes by this entry's name, and by its namespace unless
    // the context ignores namespaces.
    bool IsThisElement(const CSerializationContext& context, const CXmlElement* pElement) const;

    // The current value of the property. Throws CQnValidationException "Failed to get the property
    // value for [%s]." around a CQnException from the class.
    void ReadProperty(const CXmlGeneratedClass* pObject, QnVariant& value) const;

    // AccessProperty, with a CQnException from it wrapped into CQnValidationException "Failed to
    // get the property value for [%s]." or, with the element's path, "Failed to set the property
    // value.".
    void InvokePropertyGet(CXmlGeneratedClass* pObject, QnVariant& value) const;
    void InvokePropertySet(CXmlGeneratedClass* pObject, QnVariant& value,
                           const CXmlElement& element) const;

    // Throws CQnException if the value breaks its facets, or if this is no primitive.
    void CheckRestriction(const QnVariant& value) const;

    // Bridges to the object's virtual operations. The object may not be null.
    static CXmlElement* FromXml_Int(CXmlObjectBase* pObject, CXmlElement* pElement,
                                    CXmlElement* pCursor, const CSerializationContext& context,
                                    bool bOptionalChoice);
    static void AttributesToXml_Int(const CXmlObjectBase* pObject, CXmlWriter* pWriter,
                                    const CSerializationContext& context);

    // The namespace of a new wildcard element: that of the owner for "##any", the target namespace
    // for "##targetNamespace", and else, save for two oddities of its body, empty. A list counts
    // by its first token if that is a keyword.
    static std::string GetAnyDefaultNamespace(const char* pszNamespaces, const char* pszNamespace,
                                              const char* pszTargetNamespace);

protected:
    // Shared writers. True if something was written; a property that is not set writes nothing.

    // Writes the value, nil included. A value equal to the default is not checked against the
    // facets, and whether it stands in the output is the writer's decision.
    bool ElementToXmlPrim(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                          CXmlWriter* pWriter) const;
    // As for primitives, without facets. A function that answers null leaves the element empty.
    bool ElementToXmlEnum(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                          CXmlWriter* pWriter, const char* (*fnEnumToString)(int)) const;
    bool ElementToXmlCls(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                         CXmlWriter* pWriter, bool bOptionalChoice) const;
    // Writes the items; nothing for an empty collection or none. The bounds are the caller's
    // business.
    bool ElementToXmlCol(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                         CXmlWriter* pWriter) const;

    // Shared readers. They take *ppCursor, which must be this entry's element, and move on. All
    // failures are CQnValidationException, besides what the conversion of the text reports.
    void ElementFromXmlPrim(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                            CXmlElement** ppCursor) const;
    void ElementFromXmlEnum(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                            CXmlElement** ppCursor) const;

    // What the leaves join together; hidden, adds neither field nor slot.
    struct QNXML_PRIVATE Steps;

    // What a group needs to know about the class of an entry without asking for its run-time type.
    enum class Trait : unsigned char
    {
        None,
        HeldGroup,       // a pseudo child that is read in place and may not match
        ChoiceOptional,  // a choice member that may be absent
        ChoiceCollection // a choice member that may be absent if its collection has no lower bound
    };

    std::string m_strName;
    std::string m_strNamespace;
    int m_nProperty;
    CPrimitiveRestrictions m_restrictions;
    ItemType m_itemType = it_none;
    std::string m_strFormat;
    CWhitespaceUtils::WhitespaceRule m_whitespace{};
    std::string m_strDefault;
    bool m_bNillable = false;
    const char* (*m_fnEnumToString)(int) = nullptr;
    int (*m_fnStringToEnum)(const char*) = nullptr;
    // Set by the constructor for primitives only; the facets mean something if it is true.
    bool m_bIsPrimitive = false;
    // Set by the constructors of the classes that it speaks of.
    Trait m_trait = Trait::None;

private:
    friend class QnXmlLib16::CXmlGeneratedClass;

    [[noreturn]] void ThrowNotRead(const CQnException& e) const;
    void WriteNil(CXmlWriter* pWriter) const;
    // The value as an element with this text, checked unless it is the default.
    void WriteValue(const QnVariant& value, const std::string& strText, CXmlWriter* pWriter) const;
    // Whether the element's nil attribute is set. Fails for any other attribute that the context
    // does not ignore, and for a nil attribute where none may stand.
    bool ReadNil(const CSerializationContext& context, const CXmlElement& element) const;
    // What ElementToXmlCol does with the collection.
    bool WriteItems(const CXmlCollectionBase& collection, const CSerializationContext& context,
                    CXmlWriter* pWriter) const;
};

} // namespace QnXmlLib16Data
