#include "Entries.h"

#include "QnXmlLib16/binding/ClassfactoryBase.h"
#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "QnXmlLib16/collections/Element.h"
#include "QnXmlLib16/support/Exceptions.h"

#include <cstring>
#include <memory>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Model {

const char* FinishToText(int nFinish)
{
    return nFinish == 0 ? "raw" : nFinish == 1 ? "oiled" : nullptr;
}

int TextToFinish(const char* pszText)
{
    for (int nFinish : {0, 1}) {
        if (std::strcmp(pszText, FinishToText(nFinish)) == 0)
            return nFinish;
    }
    throw CQnInvalidValueException(std::string("No finish [") + pszText + "]");
}

CAttributeInfo* Attribute(const char* pszName, int nProperty, bool bOptional, ItemType type,
                          const char* pszDefault, const CPrimitiveRestrictions& restrictions,
                          const char* pszFormat)
{
    return new CAttributeInfoPrimitive(pszName, "", nProperty, bOptional, type, pszFormat,
                                       kCollapse, restrictions, pszDefault);
}

CAttributeInfo* EnumAttribute(const char* pszName, int nProperty, bool bOptional,
                              const char* pszDefault)
{
    return new CAttributeInfoEnum(pszName, "", nProperty, bOptional, FinishToText, TextToFinish,
                                  pszDefault);
}

CPrimitiveRestrictions AtMost(const char* pszMax)
{
    return {nullptr, -1, -1, nullptr, pszMax, nullptr, nullptr, -1, -1, -1};
}

const CTables& Vice()
{
    static const CTables tables(XmlElementGroupType_Sequence, kReal,
                                {Prim<CElementInfoSeqPrimMnd>("jaw", 1, it_i4)},
                                {Attribute("no", 0, true, it_i4)});
    return tables;
}

const CTables& Span()
{
    static const CTables tables(XmlElementGroupType_Sequence, kPseudo,
                                {Prim<CElementInfoSeqPrimMnd>("from", 0, it_i4),
                                 Prim<CElementInfoSeqPrimOpt>("to", 1, it_i4)},
                                {Attribute("unit", 2, true, it_string)});
    return tables;
}

CSmartPtr<CXmlObjectBase> MakeTool(CXmlElement* pElement)
{
    const auto type = [](const char* pszName, CElementInfo* pMember) {
        return std::make_unique<CTables>(new CParentElementInfo(XmlElementGroupType_Sequence, kReal,
                                                                pszName, "", true, true, -1,
                                                                it_none, nullptr, false),
                                         std::vector{pMember});
    };
    static const auto pHammer =
        type("Hammer", Prim<CElementInfoSeqPrimMnd>("weight", 0, it_decimal));
    static const auto pSaw = type("Saw", Prim<CElementInfoSeqPrimMnd>("teeth", 0, it_i4));
    const std::string strType = CClassfactoryBase::GetElementType(pElement);
    if (strType == "Drill")
        throw CQnInvalidStateException("out of stock");
    const CTables* const pTables = strType == "Hammer" ? pHammer.get()
                                   : strType == "Saw"  ? pSaw.get()
                                                       : nullptr;
    return pTables ? MakeSheet(pTables->GetClassId(), "tool") : CSmartPtr<CXmlObjectBase>();
}

CSheetCol* MakeVices(const char* pszName, int iMin, int iMax)
{
    const std::string strName = pszName;
    return new CSheetCol(pszName, iMin, iMax, kReal, [strName](CXmlElement*) {
        return CSmartPtr<CSheet>(new CSheet(Vice(), strName.c_str()));
    });
}

CSheetCol* MakeSpans(const char* pszName, int iMin, int iMax)
{
    return new CSheetCol(pszName, iMin, iMax, kPseudo,
                         [](CXmlElement*) { return CSmartPtr<CSheet>(new CSheet(Span(), "")); });
}

CSheetCol* MakeTools(const char* pszName, int iMin, int iMax)
{
    return new CSheetCol(pszName, iMin, iMax, kReal, [](CXmlElement* pElement) {
        return CSmartPtr<CSheet>(static_cast<CSheet*>(MakeTool(pElement).GetPtr()));
    });
}

CXmlObjectBase* MakeWildcard()
{
    return new CElement("AnyElement", "", "##any", "");
}

CXmlCollectionBase* MakeWildcards()
{
    return new CElementCol("", "##any", "", 0, -1);
}

std::string ToolXml(const char* pszName, const char* pszType, const char* pszContent)
{
    const std::string strName = pszName;
    return "<" + strName + " xmlns:AA=\"http://www.w3.org/2001/XMLSchema-instance\" AA:type=\"" +
           pszType + "\">" + pszContent + "</" + strName + ">";
}

} // namespace Model
