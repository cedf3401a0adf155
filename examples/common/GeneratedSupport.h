// What a generator puts beside the classes of every schema: the parts that are the same in all of
// them. Nothing here knows a schema.
#pragma once

#include "QnXmlLib16/binding/AttributeInfo.h"
#include "QnXmlLib16/binding/ElementInfo.h"
#include "QnXmlLib16/binding/ParentElementInfo.h"
#include "QnXmlLib16/binding/XmlGeneratedClass.h"
#include "QnXmlLib16/collections/XmlCollection.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/values/BigInteger.h"
#include "QnXmlLib16/values/DateTime.h"
#include "QnXmlLib16/values/Decimal.h"
#include "QnXmlLib16/values/QnVariant.h"

#include <memory>
#include <optional>
#include <string>
#include <type_traits>

namespace GeneratedSupport {

// Base of the generated classes: publishes the record and the tables that the class describes.
class CBoundClass : public QnXmlLib16::CXmlGeneratedClass
{
public:
    using CXmlGeneratedClass::GetBase;
    QnXmlLib16::CXmlObjectBase* GetBase() override { return this; }

    QnXmlLib16Data::CParentElementInfo* GetClassInfo() const final;
    QnXmlLib16Data::CElementInfo** GetClassElementInfo() const final;
    QnXmlLib16Data::CAttributeInfo** GetClassAttributeInfo() const final;

protected:
    // The record and the tables of one class, for all its instances.
    class CMetaData
    {
    public:
        // Calls fnDescribe, which fills the object, under the lock of all generated tables.
        explicit CMetaData(void (*fnDescribe)(CMetaData&));
        CMetaData(const CMetaData&) = delete;
        CMetaData& operator=(const CMetaData&) = delete;
        ~CMetaData();

        // Each takes over what it is given; entries come in schema order.
        void SetClass(QnXmlLib16Data::CParentElementInfo* pInfo);
        void Add(QnXmlLib16Data::CElementInfo* pElement);
        void Add(QnXmlLib16Data::CAttributeInfo* pAttribute);

    private:
        friend class CBoundClass;

        QnXmlLib16Data::CParentElementInfo* m_pInfo = nullptr;
        // Ended by a null entry, as the arrays that they become.
        QnXmlLib16Data::CElementInfo** m_ppElements = nullptr;
        QnXmlLib16Data::CAttributeInfo** m_ppAttributes = nullptr;
    };

    // The one object of the class, a function-level static: it goes at exit.
    virtual const CMetaData& GetMetaData() const = 0;
};

class CColHolder;

// Base of the generated collections: items of one generated class, which the collection makes.
class CBoundCol : public QnXmlLib16::CXmlCollection
{
public:
    ~CBoundCol() override;

    // for (CNode* p = col.begin(); p != col.end(); p = p->GetNext())
    QnXmlLib16::CNode* begin() const noexcept { return GetHeadNode(); }
    QnXmlLib16::CNode* end() const noexcept { return nullptr; }

protected:
    using CXmlCollection::CXmlCollection;

    virtual QnXmlLib16::CSmartPtr<QnXmlLib16::CXmlObjectBase> CreateItem() const = 0;

    // Called ahead of reading or writing each item, and with null when no more come: a place to
    // lend the item what it would else make for itself. Does nothing here.
    virtual void Prepare(QnXmlLib16::CXmlObjectBase* pItem) const;

    // Throws CQnInvalidParamException for null and for an item of another element name.
    void Append(QnXmlLib16::CXmlObjectBase* pItem);

    void ToXml_Int(QnXmlLib16::CXmlWriter* pWriter, bool bIsRoot, const char* pszTargetNamespace,
                   const QnXmlLib16::CSerializationContext& context,
                   bool bOptionalChoice) const override;
    // An item is added once it has been read; one that fails is not added.
    QnXmlLib16::CXmlElement* FromXml_Int(QnXmlLib16::CXmlElement* pParent,
                                         QnXmlLib16::CXmlElement* pCurrent,
                                         const QnXmlLib16::CSerializationContext& context,
                                         bool bOptionalChoice) override;

private:
    friend class CColHolder;

    friend class CColLender;

    class CPreparations;

    void Join();

    // Set while the collection is on offer and not yet the holder's own.
    CColHolder* m_pHolder = nullptr;
};

// The member of a class for a collection that most objects have nothing in. It costs one pointer:
// a collection is made for whoever asks, and becomes the holder's own with its first item. Until
// then it lives as long as someone outside holds it.
class CColHolder
{
public:
    CColHolder() = default;
    CColHolder(const CColHolder&) = delete;
    CColHolder& operator=(const CColHolder&) = delete;
    ~CColHolder();

    // Null if there is none at present.
    CBoundCol* Peek() const noexcept { return m_pCol; }

    // Takes pCol, an empty one, in place of the present collection. It may be on offer to another
    // holder, which then has none.
    void Offer(CBoundCol* pCol);

    // Lets go of a collection that has had an item; what is on offer stays so.
    void Clear();

private:
    friend class CBoundCol;

    // Counted, unless its m_pHolder is set: then it is on offer, and clears this when it dies.
    CBoundCol* m_pCol = nullptr;
};

// Lends one empty collection to one holder after the other. Reading and writing ask every object
// for each of its collections, and to make one for each object would cost more than many a value.
class CColLender
{
public:
    // Does nothing for a holder that has a collection. fnCreate makes one if the last one was kept
    // by its borrower or is in other hands too.
    template <class TCreate>
    void LendTo(CColHolder& holder, TCreate fnCreate)
    {
        if (holder.Peek())
            return;
        if (!IsFree())
            m_pCol = fnCreate();
        holder.Offer(m_pCol.GetPtr());
    }

    void TakeBack() { m_pCol.Reset(); }

private:
    bool IsFree() const;

    QnXmlLib16::CSmartPtr<CBoundCol> m_pCol;
};

// Values between a property and the variant that it travels in.

inline void Put(QnXmlLib16::QnVariant& variant, const std::string& value)
{
    variant.SetString(value);
}
inline void Put(QnXmlLib16::QnVariant& variant, const QnXmlLib16::CDecimal& value)
{
    variant.SetDecimal(value);
}
inline void Put(QnXmlLib16::QnVariant& variant, const QnXmlLib16::CBigInteger& value)
{
    variant.SetInteger(value);
}
inline void Put(QnXmlLib16::QnVariant& variant, bool value)
{
    variant.SetBoolean(value);
}
inline void Put(QnXmlLib16::QnVariant& variant, long value)
{
    variant.SetI4(value);
}
inline void Put(QnXmlLib16::QnVariant& variant, unsigned short value)
{
    variant.SetYear(value);
}
inline void Put(QnXmlLib16::QnVariant& variant, const QnXmlLib16::CDateTime& value)
{
    variant.SetDateTime(value);
}

inline void Take(const QnXmlLib16::QnVariant& variant, std::string& value)
{
    const std::string* const pValue = variant.PeekString();
    value = pValue ? *pValue : std::string();
}
inline void Take(const QnXmlLib16::QnVariant& variant, QnXmlLib16::CDecimal& value)
{
    const QnXmlLib16::CDecimal* const pValue = variant.PeekDecimal();
    value = pValue ? *pValue : QnXmlLib16::CDecimal();
}
inline void Take(const QnXmlLib16::QnVariant& variant, QnXmlLib16::CBigInteger& value)
{
    value = variant.GetInteger();
}
inline void Take(const QnXmlLib16::QnVariant& variant, bool& value)
{
    value = variant.GetBoolean();
}
inline void Take(const QnXmlLib16::QnVariant& variant, long& value)
{
    value = variant.GetI4();
}
inline void Take(const QnXmlLib16::QnVariant& variant, unsigned short& value)
{
    value = variant.GetYear();
}
inline void Take(const QnXmlLib16::QnVariant& variant, QnXmlLib16::CDateTime& value)
{
    const QnXmlLib16::CDateTime* const pValue = variant.PeekDateTime();
    value = pValue ? *pValue : QnXmlLib16::CDateTime();
}

// Enumerations travel as i4.
template <class T>
std::enable_if_t<std::is_enum_v<T>> Put(QnXmlLib16::QnVariant& variant, T value)
{
    variant.SetI4(value);
}
template <class T>
std::enable_if_t<std::is_enum_v<T>> Take(const QnXmlLib16::QnVariant& variant, T& value)
{
    value = static_cast<T>(variant.GetI4());
}

// AccessProperty for a member of type T.
template <class T>
void Access(bool bRead, QnXmlLib16::QnVariant& variant, T& member)
{
    if (bRead)
        Put(variant, member);
    else
        Take(variant, member);
}

// The same for an optional one: no value is an invalid variant.
template <class T>
void Access(bool bRead, QnXmlLib16::QnVariant& variant, std::optional<T>& member)
{
    if (!bRead && !variant.IsValid())
        member.reset();
    else if (!bRead)
        Take(variant, member ? *member : member.emplace());
    else if (member)
        Put(variant, *member);
    else
        variant.SetInvalid();
}

// The object in a variant, null if there is none. Throws CQnInvalidParamException for an object of
// another class.
template <class T>
T* GetObjectOf(const QnXmlLib16::QnVariant& variant)
{
    QnXmlLib16::CXmlObjectBase* const pObject = variant.PeekXmlObject();
    T* const pTyped = dynamic_cast<T*>(pObject);
    if (pObject && !pTyped)
        throw QnXmlLib16::CQnInvalidParamException("The object is of another class.");
    return pTyped;
}

} // namespace GeneratedSupport
