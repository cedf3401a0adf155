#include "examples/gpx/model/RteType.h"

#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "examples/gpx/model/ExtensionsType.h"
#include "examples/gpx/model/GpxClassFactory.h"
#include "examples/gpx/model/LinkType.h"
#include "examples/gpx/model/SimpleTypes.h"
#include "examples/gpx/model/WptType.h"

using namespace GeneratedSupport;
using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Gpx {

const CRteType::CMetaData& CRteType::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(DescribeSequence("rteType"));
        table.Add(OptionalElement("name", Property_Name, StringType()));
        table.Add(OptionalElement("cmt", Property_Cmt, StringType()));
        table.Add(OptionalElement("desc", Property_Desc, StringType()));
        table.Add(OptionalElement("src", Property_Src, StringType()));
        table.Add(
            new CElementInfoSeqClsCol("link", kNamespace, Property_Link, XmlElementType_Element));
        table.Add(OptionalElement("number", Property_Number, NonNegativeIntegerType()));
        table.Add(OptionalElement("type", Property_Type, StringType()));
        table.Add(new CElementInfoSeqClsOpt("extensions", kNamespace, Property_Extensions,
                                            XmlElementType_Element, CGpxClassFactory::Create,
                                            CGpxClassFactory::Class_ExtensionsType));
        table.Add(
            new CElementInfoSeqClsCol("rtept", kNamespace, Property_Rtept, XmlElementType_Element));
    });
    return data;
}

CRteType::CRteType()
    : m_pLink(new CLinkTypeCol("link", kNamespace, 0, -1)),
      m_pRtept(new CWptTypeCol("rtept", kNamespace, 0, -1))
{
    SetElementName("rte");
}

CRteType::~CRteType() = default;

CSmartPtr<CExtensionsType> CRteType::GetExtensions() const
{
    return m_pExtensions;
}

void CRteType::SetExtensions(CExtensionsType* pValue)
{
    Throw_IfElementNameDiffers(pValue, "extensions");
    m_pExtensions = pValue;
}

CSmartPtr<CLinkTypeCol> CRteType::GetLink() const
{
    return m_pLink;
}

CSmartPtr<CWptTypeCol> CRteType::GetRtept() const
{
    return m_pRtept;
}

void CRteType::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Name:
        return Access(bRead, value, m_name);
    case Property_Cmt:
        return Access(bRead, value, m_cmt);
    case Property_Desc:
        return Access(bRead, value, m_desc);
    case Property_Src:
        return Access(bRead, value, m_src);
    case Property_Link:
        return value.SetXmlCollection(m_pLink.GetPtr());
    case Property_Number:
        return Access(bRead, value, m_number);
    case Property_Type:
        return Access(bRead, value, m_type);
    case Property_Extensions:
        return bRead ? value.SetXmlObject(m_pExtensions.GetPtr())
                     : SetExtensions(GetObjectOf<CExtensionsType>(value));
    case Property_Rtept:
        return value.SetXmlCollection(m_pRtept.GetPtr());
    default:
        return ThrowUnknownProperty(nProperty);
    }
}

void CRteType::Init()
{
    m_name.reset();
    m_cmt.reset();
    m_desc.reset();
    m_src.reset();
    m_pLink->Clear();
    m_number.reset();
    m_type.reset();
    m_pExtensions.Reset();
    m_pRtept->Clear();
}

CSmartPtr<CRteType> CRteTypeCol::Add()
{
    const CSmartPtr<CRteType> pItem = new CRteType;
    pItem->SetElementName(m_strElementName.c_str());
    Add(pItem.GetPtr());
    return pItem;
}

void CRteTypeCol::Add(CRteType* pItem)
{
    Append(pItem);
}

CSmartPtr<CRteType> CRteTypeCol::Item(int iIndex) const
{
    return static_cast<CRteType*>(GetNodeAtIndex(iIndex)->GetItem());
}

CSmartPtr<CXmlObjectBase> CRteTypeCol::CreateItem() const
{
    return new CRteType;
}

} // namespace Gpx
