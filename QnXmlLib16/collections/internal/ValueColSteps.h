#pragma once

#include "QnXmlLib16/binding/XmlObjectHelper.h"
#include "QnXmlLib16/collections/XmlTypeCollection.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/values/Conversions.h"
#include "QnXmlLib16/xml/XmlWriter.h"

#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

// What the typed collections do, once for all of them. A collection hands in its vector and the
// place of its first value.
//
// Invariant: the values of a collection are those from nFirst on, and nFirst is 0 where there are
// none. The slots in front are left behind by removals at index 0, which so cost constant time:
// Clear() removes one by one from the front, as its listeners are to see. They hold default
// values.
namespace QnXmlLib16 {
namespace ValueColSteps {

// How a value is handed in: small ones and texts by value, the others by reference.
template <class T>
using Argument =
    std::conditional_t<std::is_scalar_v<T> || std::is_same_v<T, std::string>, T, const T&>;

// "Index %d is out of range, use 0 - %d".
[[noreturn]] void ThrowBadItemIndex(int iIndex, int iCount);
// "Index out of range"
[[noreturn]] void ThrowBadInsertIndex();

template <class TVec>
int Count(const TVec& vecItems, std::size_t nFirst)
{
    return static_cast<int>(vecItems.size() - nFirst);
}

template <class TVec>
typename TVec::value_type ItemAt(const TVec& vecItems, std::size_t nFirst, int iIndex)
{
    if (iIndex < 0 || iIndex >= Count(vecItems, nFirst))
        ThrowBadItemIndex(iIndex, Count(vecItems, nFirst));
    return vecItems[nFirst + static_cast<std::size_t>(iIndex)];
}

// Deliberate: the listeners hear of a value before its index and its facets are looked at; a
// refused one never completes. Pinned by ValueCollection.WhatIsRefusedIsAnnouncedFirst.
// A listener may change the collection, so nFirst is the collection's own and read after that.
template <class TVec, class TValue, class TCheck>
void InsertAt(CXmlTypeCollection& col, TVec& vecItems, const std::size_t& nFirst, int iIndex,
              TValue& value, TCheck check)
{
    void* const pValue = const_cast<void*>(static_cast<const void*>(std::addressof(value)));
    col.FireOnCollectionAdd(pValue);
    if (iIndex < 0 || iIndex > Count(vecItems, nFirst))
        ThrowBadInsertIndex();
    check(value);
    vecItems.insert(vecItems.begin() + static_cast<std::ptrdiff_t>(nFirst) + iIndex, value);
    col.FireOnCollectionAddComplete(pValue);
    col.FireOnCollectionChange();
}

template <class TVec>
void Erase(TVec& vecItems, std::size_t& nFirst, int iIndex)
{
    if (iIndex > 0) {
        vecItems.erase(vecItems.begin() + static_cast<std::ptrdiff_t>(nFirst) + iIndex);
        return;
    }
    vecItems[nFirst] = typename TVec::value_type();
    ++nFirst;
    if (nFirst == vecItems.size()) {
        vecItems.clear();
        nFirst = 0;
    }
    else if (nFirst > vecItems.size() - nFirst) {
        vecItems.erase(vecItems.begin(), vecItems.begin() + static_cast<std::ptrdiff_t>(nFirst));
        nFirst = 0;
    }
}

// Deliberate: a bad index is announced before it is refused. Pinned by
// ValueCollection.WhatIsRefusedIsAnnouncedFirst.
template <class TVec>
void RemoveAt(CXmlTypeCollection& col, TVec& vecItems, std::size_t& nFirst, int iIndex)
{
    col.FireOnCollectionRemove(iIndex);
    if (iIndex < 0 || iIndex >= Count(vecItems, nFirst))
        ThrowBadItemIndex(iIndex, Count(vecItems, nFirst));
    Erase(vecItems, nFirst, iIndex);
    // Deliberate: this second event always carries 0. A listener that wants the place takes it
    // from the first one. Pinned by ValueCollection.ListenersHearEachStepInOrder.
    col.FireOnCollectionRemoveComplete(0);
    col.FireOnCollectionChange();
}

inline void Clear(CXmlTypeCollection& col)
{
    while (col.GetCount() != 0)
        col.Remove(0);
}

template <class TVec, class TToText>
void Write(const CXmlTypeCollection& col, const TVec& vecItems, std::size_t nFirst,
           const std::string& strName, const std::string& strNamespace, CXmlWriter& writer,
           const CSerializationContext& context, ItemType itemType, TToText toText)
{
    col.ValidateCount(context);
    for (std::size_t n = nFirst; n < vecItems.size(); ++n) {
        writer.WriteStartElement(strName, strNamespace);
        writer.WriteString(toText(vecItems[n]), itemType, false);
        writer.WriteEndElement();
    }
}

} // namespace ValueColSteps
} // namespace QnXmlLib16

// Constructor and destructor of a collection whose base takes the ItemType first.
#define QNXML_DEFINE_COL_LIFE(suffix, Base, itemType)                                              \
    C##suffix##Col::C##suffix##Col(                                                                \
        const char* pszElementName, const char* pszNamespace, int iMinOccurs, int iMaxOccurs,      \
        const char* pszPattern, long lMinLength, long lMaxLength, const char* pszMinInclusive,     \
        const char* pszMaxInclusive, const char* pszMinExclusive, const char* pszMaxExclusive,     \
        long lLength, long lTotalDigits, long lFractionDigits,                                     \
        CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* pszFormat)                    \
        : Base(itemType, pszElementName, pszNamespace, iMinOccurs, iMaxOccurs, pszPattern,         \
               lMinLength, lMaxLength, pszMinInclusive, pszMaxInclusive, pszMinExclusive,          \
               pszMaxExclusive, lLength, lTotalDigits, lFractionDigits, whitespaceRule,            \
               pszFormat),                                                                         \
          CInstanceMonitor("C" #suffix "Col")                                                      \
    {}                                                                                             \
    C##suffix##Col::~C##suffix##Col() = default;

// All members of a value collection. `check` takes (name, value, restrictions), `toText` a value.
#define QNXML_DEFINE_VALUE_COL_WITH(suffix, Type, itemType, check, toText)                         \
    QNXML_DEFINE_COL_LIFE(suffix, CXmlTypeCollection, itemType)                                    \
    int C##suffix##Col::GetCount() const                                                           \
    {                                                                                              \
        return ValueColSteps::Count(m_vecItems, m_nFirst);                                         \
    }                                                                                              \
    void C##suffix##Col::Clear()                                                                   \
    {                                                                                              \
        ValueColSteps::Clear(*this);                                                               \
    }                                                                                              \
    void C##suffix##Col::Remove(int iIndex)                                                        \
    {                                                                                              \
        ValueColSteps::RemoveAt(*this, m_vecItems, m_nFirst, iIndex);                              \
    }                                                                                              \
    void C##suffix##Col::ToXml_Int(CXmlWriter* pWriter, bool, const char*,                         \
                                   const CSerializationContext& context, bool) const               \
    {                                                                                              \
        ValueColSteps::Write(*this, m_vecItems, m_nFirst, m_strElementName, m_strNamespace,        \
                             *pWriter, context, itemType, toText);                                 \
    }                                                                                              \
    void C##suffix##Col::AddFromString(std::string strText)                                        \
    {                                                                                              \
        Add(CConversions::suffix##FromString(strText, m_whitespaceRule));                          \
    }                                                                                              \
    Type C##suffix##Col::Item(int iIndex) const                                                    \
    {                                                                                              \
        return ValueColSteps::ItemAt(m_vecItems, m_nFirst, iIndex);                                \
    }                                                                                              \
    void C##suffix##Col::AddAt(int iIndex, ValueColSteps::Argument<Type> value)                    \
    {                                                                                              \
        ValueColSteps::InsertAt(*this, m_vecItems, m_nFirst, iIndex, value,                        \
                                [this](const Type& checked) {                                      \
                                    check(m_strElementName.c_str(), checked, m_restrictions);      \
                                });                                                                \
    }                                                                                              \
    void C##suffix##Col::Add(ValueColSteps::Argument<Type> value)                                  \
    {                                                                                              \
        AddAt(GetCount(), std::move(value));                                                       \
    }

#define QNXML_DEFINE_VALUE_COL(suffix, Type, itemType)                                             \
    QNXML_DEFINE_VALUE_COL_WITH(suffix, Type, itemType,                                            \
                                CXmlObjectHelper::CheckRestrictionFor##suffix,                     \
                                CConversions::suffix##ToString)

// With a text that takes the format of the collection.
#define QNXML_DEFINE_FORMATTED_VALUE_COL(suffix, Type, itemType)                                   \
    QNXML_DEFINE_VALUE_COL_WITH(suffix, Type, itemType,                                            \
                                CXmlObjectHelper::CheckRestrictionFor##suffix,                     \
                                ([this](const Type& value) {                                       \
                                    return CConversions::suffix##ToString(value, m_strFormat);     \
                                }))

// All members of a final class over CdatetimeBaseCol; `kind` is what CDateTime::GetType() has to
// answer.
#define QNXML_DEFINE_DATE_COL(suffix, kind, itemType)                                              \
    QNXML_DEFINE_COL_LIFE(suffix, CdatetimeBaseCol, itemType)                                      \
    void C##suffix##Col::AddFromString(std::string strText)                                        \
    {                                                                                              \
        Add(CConversions::suffix##FromString(strText, m_whitespaceRule));                          \
    }                                                                                              \
    void C##suffix##Col::AddAt(int iIndex, const CDateTime& value)                                 \
    {                                                                                              \
        if (value.GetType() != kind) {                                                             \
            throw CQnInvalidParamException(                                                        \
                "Dates added to this collection must be of type " #kind);                          \
        }                                                                                          \
        CXmlObjectHelper::CheckRestrictionFor##suffix(m_strElementName.c_str(), value,             \
                                                      m_restrictions);                             \
        BaseAddAt(iIndex, value);                                                                  \
    }                                                                                              \
    std::string C##suffix##Col::ItemToString(const CDateTime& value) const                         \
    {                                                                                              \
        return CConversions::suffix##ToString(value);                                              \
    }
