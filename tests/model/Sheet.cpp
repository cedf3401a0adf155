#include "Sheet.h"

#include "QnXmlLib16/binding/AttributeInfo.h"
#include "QnXmlLib16/binding/ElementInfo.h"
#include "QnXmlLib16/collections/AttributeCol.h"
#include "QnXmlLib16/collections/Element.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/xml/XmlElement.h"

#include <cstring>
#include <gtest/gtest.h>
#include <typeinfo>
#include <utility>

using namespace QnXmlLib16;
using QnXmlLib16Data::CAttributeInfo;
using QnXmlLib16Data::CElementInfo;
using QnXmlLib16Data::CParentElementInfo;

namespace Model {

namespace {

std::vector<const CTables*> s_vecClasses;

std::string DumpObject(CXmlObjectBase& object)
{
    if (const CSheet* const pSheet = dynamic_cast<const CSheet*>(&object))
        return "{" + pSheet->Dump() + "}";
    return ToText(object);
}

std::string DumpItems(CXmlCollectionBase& collection)
{
    std::string strDump;
    const auto add = [&](const std::string& strItem) {
        strDump += (strDump.empty() ? "[" : "|") + strItem;
    };
    if (const auto* const pTexts = dynamic_cast<const CstringCol*>(&collection)) {
        for (int i = 0; i < pTexts->GetCount(); ++i)
            add(pTexts->Item(i));
    }
    else if (const auto* const pSheets = dynamic_cast<const CSheetCol*>(&collection)) {
        for (const CNode* pNode = pSheets->begin(); pNode; pNode = pNode->GetNext())
            add(DumpObject(*pNode->GetItem()));
    }
    else if (const auto* const pElements = dynamic_cast<const CElementCol*>(&collection)) {
        for (const CNode* pNode = pElements->begin(); pNode; pNode = pNode->GetNext())
            add(DumpObject(*pNode->GetItem()));
    }
    else if (const auto* const pAttributes = dynamic_cast<const CAttributeCol*>(&collection)) {
        for (int i = 0; i < pAttributes->GetCount(); ++i)
            add(pAttributes->Item(i)->GetName() + "=" + pAttributes->Item(i)->GetValue());
    }
    return strDump.empty() ? "" : strDump + "]";
}

std::string ShortClassName(const CQnException& e)
{
    const std::string strName = typeid(e).name();
    return strName.substr(strName.find("CQn"), strName.size() - strName.find("CQn") - 1);
}

} // namespace

CTables::CTables(XmlElementGroupType groupType, XmlElementType elementType,
                 std::vector<CElementInfo*> elements, std::vector<CAttributeInfo*> attributes,
                 std::vector<CHeld> held)
    : CTables(new CParentElementInfo(groupType, elementType, "SheetType", "", elementType == kReal,
                                     false, -1, it_none, nullptr, false),
              std::move(elements), std::move(attributes), std::move(held))
{}

CTables::CTables(CParentElementInfo* pInfo, std::vector<CElementInfo*> elements,
                 std::vector<CAttributeInfo*> attributes, std::vector<CHeld> held)
    : m_pInfo(pInfo),
      m_vecElements(std::move(elements)),
      m_vecAttributes(std::move(attributes)),
      m_vecHeld(std::move(held)),
      m_nClassId(static_cast<int>(s_vecClasses.size()))
{
    m_vecElements.push_back(nullptr);
    m_vecAttributes.push_back(nullptr);
    s_vecClasses.push_back(this);
}

CTables::~CTables()
{
    s_vecClasses[static_cast<std::size_t>(m_nClassId)] = nullptr;
    delete m_pInfo;
    for (const CElementInfo* const pEntry : m_vecElements)
        delete pEntry;
    for (const CAttributeInfo* const pEntry : m_vecAttributes)
        delete pEntry;
}

CHeld HeldObject(int nProperty, std::function<CXmlObjectBase*()> make)
{
    return {nProperty, [make](QnVariant& value) {
                const CSmartPtr<CXmlObjectBase> pObject(make());
                value.SetXmlObject(pObject.GetPtr());
            }};
}

CHeld HeldSheet(int nProperty, const CTables& tables, const char* pszName)
{
    const std::string strName = pszName;
    return HeldObject(nProperty,
                      [&tables, strName] { return new CSheet(tables, strName.c_str()); });
}

CHeld HeldItems(int nProperty, std::function<CXmlCollectionBase*()> make)
{
    return {nProperty, [make](QnVariant& value) { value.SetXmlCollection(make()); }};
}

CSmartPtr<CXmlObjectBase> MakeSheet(int nClassId, const char* pszName)
{
    return CSmartPtr<CSheet>(
        new CSheet(*s_vecClasses[static_cast<std::size_t>(nClassId)], pszName));
}

int CSheet::s_nAlive = 0;

CSheet::CSheet(const CTables& tables, const char* pszName) : m_tables(tables)
{
    ++s_nAlive;
    SetElementName(pszName);
    Init();
}

CSheet::~CSheet()
{
    --s_nAlive;
}

void CSheet::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    if (m_before)
        m_before(nProperty, bRead);
    if (bRead)
        value = m_values[nProperty];
    else
        m_values[nProperty] = value;
}

CParentElementInfo* CSheet::GetClassInfo() const
{
    return m_tables.m_pInfo;
}

CElementInfo** CSheet::GetClassElementInfo() const
{
    return const_cast<CElementInfo**>(m_tables.m_vecElements.data());
}

CAttributeInfo** CSheet::GetClassAttributeInfo() const
{
    return const_cast<CAttributeInfo**>(m_tables.m_vecAttributes.data());
}

void CSheet::Init()
{
    for (auto& [nProperty, value] : m_values)
        value = QnVariant();
    for (const CHeld& held : m_tables.m_vecHeld)
        held.hold(m_values[held.nProperty]);
}

std::string CSheet::Dump() const
{
    std::string strDump;
    for (const auto& [nProperty, value] : m_values) {
        std::string strValue;
        if (CXmlObjectBase* const pObject = value.PeekXmlObject())
            strValue = DumpObject(*pObject);
        else if (CXmlCollectionBase* const pCollection = value.PeekXmlCollection())
            strValue = DumpItems(*pCollection);
        else if (value.GetItemType() != it_none && value.GetItemType() < it_xmlObject)
            strValue = value.ToString("");
        if (!strValue.empty() && strValue != "{}")
            strDump += (strDump.empty() ? "" : " ") + std::to_string(nProperty) + ":" + strValue;
    }
    return strDump;
}

CSheetCol::CSheetCol(const char* pszName, int iMin, int iMax, XmlElementType itemType, Maker make)
    : CXmlCollection(pszName, "", iMin, iMax), m_itemType(itemType), m_make(std::move(make))
{}

void CSheetCol::ToXml_Int(CXmlWriter* pWriter, bool, const char* pszTargetNamespace,
                          const CSerializationContext& context, bool) const
{
    ValidateCount(context);
    for (const CNode* pNode = begin(); pNode; pNode = pNode->GetNext())
        CXmlObjectBase::ToXml_Int(pNode->GetItem(), pWriter, false, pszTargetNamespace, context,
                                  false);
}

CXmlElement* CSheetCol::FromXml_Int(CXmlElement* pElement, CXmlElement* pCursor,
                                    const CSerializationContext& context, bool)
{
    while (pCursor) {
        const bool bOwnElement = m_itemType == kReal;
        if (bOwnElement && !DoesElementNameMatch(context, pCursor, m_strElementName.c_str(), ""))
            return pCursor;
        const CSmartPtr<CSheet> pItem = m_make(pCursor);
        if (!pItem)
            return pCursor;
        CXmlElement* pNext = pCursor->GetNextSiblingElement();
        if (bOwnElement)
            CXmlObjectBase::FromXml_Int(pItem.GetPtr(), pCursor, pCursor->GetFirstElement(),
                                        context);
        else
            pNext = CXmlObjectBase::FromXml_Int(pItem.GetPtr(), pElement, pCursor, context);
        if (pNext == pCursor)
            return pCursor;
        AppendItem(pItem.GetPtr());
        pCursor = pNext;
    }
    return nullptr;
}

CstringCol* MakeTexts(const char* pszName, int iMin, int iMax)
{
    return new CstringCol(pszName, "", iMin, iMax, nullptr, -1, -1, nullptr, nullptr, nullptr,
                          nullptr, -1, -1, -1, CWhitespaceUtils::WhitespaceRule_None, nullptr);
}

CSerializationContext MakeContext(const char* pszFlags)
{
    const auto has = [&](char c) { return std::strchr(pszFlags, c) != nullptr; };
    CSerializationContext context;
    context.SetIgnoreUnknownAttributes(has('a'));
    context.SetIgnoreInvalidCollectionCounts(has('c'));
    context.SetIgnoreMissingMandatoryElements(has('m'));
    context.SetIgnoreNamespaces(has('n'));
    context.SetIgnoreUnknownElements(has('u'));
    context.SetIgnoreMissingChoice(has('x'));
    return context;
}

std::string Failure(const std::function<void()>& action)
{
    std::string strChain;
    try {
        action();
    }
    catch (const CQnException& e) {
        for (const CQnException* p = &e; p; p = p->GetInnerException()) {
            const std::string strPath = p->GetPath();
            std::string strMessage = p->GetMessage();
            if (!strPath.empty())
                strMessage.resize(strMessage.size() - strPath.size() - 7); // "\nPath: "
            strChain += (strChain.empty() ? "" : " < ") + ShortClassName(*p) + ": " + strMessage;
            if (!strPath.empty())
                strChain += " @" + strPath;
        }
    }
    return strChain;
}

std::string Read(CSheet& sheet, const std::string& strChildren, const char* pszFlags)
{
    const std::string strFailure = Failure(
        [&] { sheet.FromXml(("<r>" + strChildren + "</r>").c_str(), MakeContext(pszFlags)); });
    return strFailure.empty() ? sheet.Dump() : strFailure;
}

std::string Read(const CTables& tables, const std::string& strChildren, const char* pszFlags)
{
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    return Read(*pSheet, strChildren, pszFlags);
}

void ExpectReads(const CTables& tables, std::initializer_list<ReadRow> rows)
{
    for (const ReadRow& row : rows) {
        SCOPED_TRACE(row.children + " " + row.flags);
        EXPECT_EQ(Read(tables, row.children, row.flags), row.result);
    }
}

std::string LeftOver(const std::string& strName)
{
    return "CQnException: Failed read all the elements held within the element [r]. The unexpected "
           "element [" +
           strName + "] remains un processed @/r";
}

std::string ToText(const CXmlObjectBase& object, const CSerializationContext& context)
{
    return object.ToXml(false, false, EOLType_LF, context);
}

std::string WriteChildren(const CSheet& sheet, const char* pszFlags)
{
    std::string strText;
    const std::string strFailure = Failure([&] { strText = ToText(sheet, MakeContext(pszFlags)); });
    if (!strFailure.empty())
        return strFailure;
    const std::size_t nStart = strText.find('>') + 1;
    const std::size_t nEnd = strText.rfind('<');
    return strText == "<r/>" ? "" : strText.substr(nStart, nEnd - nStart);
}

} // namespace Model
