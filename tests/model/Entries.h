#pragma once

#include "Sheet.h"

#include "QnXmlLib16/binding/AttributeInfo.h"
#include "QnXmlLib16/binding/ElementInfo.h"
#include "QnXmlLib16/validation/PrimitiveRestrictions.h"
#include "QnXmlLib16/validation/WhitespaceUtils.h"

// Short forms of table entries, and what the entries of several tests need: an enumeration, and
// classes for children.
namespace Model {

inline constexpr auto kCollapse = QnXmlLib16::CWhitespaceUtils::WhitespaceRule_Collapse;

// raw, oiled; a text that is neither throws CQnInvalidValueException "No finish [%s]".
const char* FinishToText(int nFinish);
int TextToFinish(const char* pszText);

template <class TInfo>
TInfo* Prim(const char* pszName, int nProperty, QnXmlLib16::ItemType type = QnXmlLib16::it_string,
            const char* pszDefault = nullptr,
            const QnXmlLib16::CPrimitiveRestrictions& restrictions = {})
{
    return new TInfo(pszName, "", nProperty, true, type, nullptr, kCollapse, restrictions,
                     pszDefault);
}

template <class TInfo>
TInfo* Enum(const char* pszName, int nProperty, const char* pszDefault = nullptr)
{
    return new TInfo(pszName, "", nProperty, true, FinishToText, TextToFinish, pszDefault);
}

QnXmlLib16Data::CAttributeInfo*
Attribute(const char* pszName, int nProperty, bool bOptional, QnXmlLib16::ItemType type,
          const char* pszDefault = nullptr,
          const QnXmlLib16::CPrimitiveRestrictions& restrictions = {},
          const char* pszFormat = nullptr);
QnXmlLib16Data::CAttributeInfo* EnumAttribute(const char* pszName, int nProperty, bool bOptional,
                                              const char* pszDefault = nullptr);

// Not above nMax.
QnXmlLib16::CPrimitiveRestrictions AtMost(const char* pszMax);

// element with an optional attribute no (0) and a mandatory child jaw (1), both i4
const CTables& Vice();

// group of from (0) and, optional, to (1), with an optional attribute unit (2) of the element
// around it
const CTables& Span();

// The class that xsi:type names: Hammer (weight (0)) or Saw (teeth (0)). Fails with
// CQnInvalidStateException "out of stock" for Drill; null for any other.
QnXmlLib16::CSmartPtr<QnXmlLib16::CXmlObjectBase> MakeTool(QnXmlLib16::CXmlElement* pElement);

CSheetCol* MakeVices(const char* pszName, int iMin = 0, int iMax = -1);
CSheetCol* MakeSpans(const char* pszName, int iMin = 0, int iMax = -1);
CSheetCol* MakeTools(const char* pszName, int iMin = 0, int iMax = -1);

QnXmlLib16::CXmlObjectBase* MakeWildcard();
QnXmlLib16::CXmlCollectionBase* MakeWildcards();

// An element with xsi:type, as the writer has it.
std::string ToolXml(const char* pszName, const char* pszType, const char* pszContent);

} // namespace Model
