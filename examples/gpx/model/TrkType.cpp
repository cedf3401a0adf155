#include "examples/gpx/model/TrkType.h"

#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "examples/gpx/model/ExtensionsType.h"
#include "examples/gpx/model/GpxClassFactory.h"
#include "examples/gpx/model/LinkType.h"
#include "examples/gpx/model/SimpleTypes.h"
#include "examples/gpx/model/TrksegType.h"

using namespace GeneratedSupport;
using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Gpx {

const CTrkType::CMetaData& CTrkType::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(DescribeSequence("trkType"));
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
        table.Add(new CElementInfoSeqClsCol("trkseg", kNamespace, Property_Trkseg,
                                            XmlElementType_Element));
    });
    return data;
}

CTrkType::CTrkType()
    : m_pLink(new CLinkTypeCol("link", kNamespace, 0, -1)),
      m_pTrkseg(new CTrksegTypeCol("trkseg", kNamespace, 0, -1))
{
    SetElementName("trk");
}

CTrkType::~CTrkType() = default;

CSmartPtr<CExtensionsType> CTrkType::GetExtensions() const
{
    return m_pExtensions;
}

void CTrkType::SetExtensions(CExtensionsType* pValue)
{
    Throw_IfElementNameDiffers(pValue, "extensions");
    m_pExtensions = pValue;
}

CSmartPtr<CLinkTypeCol> CTrkType::GetLink() const
{
    return m_pLink;
}

CSmartPtr<CTrksegTypeCol> CTrkType::GetTrkseg() const
{
    return m_pTrkseg;
}

void CTrkType::AccessProperty(int nProperty, bool bRead, QnVariant& value)
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
    case Property_Trkseg:
        return value.SetXmlCollection(m_pTrkseg.GetPtr());
    default:
        return ThrowUnknownProperty(nProperty);
    }
}

void CTrkType::Init()
{
    m_name.reset();
    m_cmt.reset();
    m_desc.reset();
    m_src.reset();
    m_pLink->Clear();
    m_number.reset();
    m_type.reset();
    m_pExtensions.Reset();
    m_pTrkseg->Clear();
}

CSmartPtr<CTrkType> CTrkTypeCol::Add()
{
    const CSmartPtr<CTrkType> pItem = new CTrkType;
    pItem->SetElementName(m_strElementName.c_str());
    Add(pItem.GetPtr());
    return pItem;
}

void CTrkTypeCol::Add(CTrkType* pItem)
{
    Append(pItem);
}

CSmartPtr<CTrkType> CTrkTypeCol::Item(int iIndex) const
{
    return static_cast<CTrkType*>(GetNodeAtIndex(iIndex)->GetItem());
}

CSmartPtr<CXmlObjectBase> CTrkTypeCol::CreateItem() const
{
    return new CTrkType;
}

} // namespace Gpx
