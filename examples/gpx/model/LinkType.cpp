#include "examples/gpx/model/LinkType.h"

#include "examples/gpx/model/SimpleTypes.h"

using namespace GeneratedSupport;
using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Gpx {

const CLinkType::CMetaData& CLinkType::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(DescribeSequence("linkType"));
        table.Add(RequiredAttribute("href", Property_Href, AnyUriType()));
        table.Add(OptionalElement("text", Property_Text, StringType()));
        table.Add(OptionalElement("type", Property_Type, StringType()));
    });
    return data;
}

CLinkType::CLinkType()
{
    SetElementName("link");
}

CLinkType::~CLinkType() = default;

void CLinkType::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Href:
        return Access(bRead, value, m_strHref);
    case Property_Text:
        return Access(bRead, value, m_text);
    case Property_Type:
        return Access(bRead, value, m_type);
    default:
        return ThrowUnknownProperty(nProperty);
    }
}

void CLinkType::Init()
{
    m_strHref.clear();
    m_text.reset();
    m_type.reset();
}

CSmartPtr<CLinkType> CLinkTypeCol::Add()
{
    const CSmartPtr<CLinkType> pItem = new CLinkType;
    pItem->SetElementName(m_strElementName.c_str());
    Add(pItem.GetPtr());
    return pItem;
}

void CLinkTypeCol::Add(CLinkType* pItem)
{
    Append(pItem);
}

CSmartPtr<CLinkType> CLinkTypeCol::Item(int iIndex) const
{
    return static_cast<CLinkType*>(GetNodeAtIndex(iIndex)->GetItem());
}

CSmartPtr<CXmlObjectBase> CLinkTypeCol::CreateItem() const
{
    return new CLinkType;
}

} // namespace Gpx
