#include "examples/gpx/model/GpxType.h"

#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "examples/gpx/model/ExtensionsType.h"
#include "examples/gpx/model/GpxClassFactory.h"
#include "examples/gpx/model/MetadataType.h"
#include "examples/gpx/model/RteType.h"
#include "examples/gpx/model/SimpleTypes.h"
#include "examples/gpx/model/TrkType.h"
#include "examples/gpx/model/WptType.h"

using namespace GeneratedSupport;
using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Gpx {

const CGpxType::CMetaData& CGpxType::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(DescribeSequence("gpxType"));
        table.Add(new CElementInfoSeqClsOpt("metadata", kNamespace, Property_Metadata,
                                            XmlElementType_Element, CGpxClassFactory::Create,
                                            CGpxClassFactory::Class_MetadataType));
        table.Add(
            new CElementInfoSeqClsCol("wpt", kNamespace, Property_Wpt, XmlElementType_Element));
        table.Add(
            new CElementInfoSeqClsCol("rte", kNamespace, Property_Rte, XmlElementType_Element));
        table.Add(
            new CElementInfoSeqClsCol("trk", kNamespace, Property_Trk, XmlElementType_Element));
        table.Add(new CElementInfoSeqClsOpt("extensions", kNamespace, Property_Extensions,
                                            XmlElementType_Element, CGpxClassFactory::Create,
                                            CGpxClassFactory::Class_ExtensionsType));
        table.Add(RequiredAttribute("version", Property_Version, StringType()));
        table.Add(RequiredAttribute("creator", Property_Creator, StringType()));
    });
    return data;
}

CGpxType::CGpxType()
    : m_pWpt(new CWptTypeCol("wpt", kNamespace, 0, -1)),
      m_pRte(new CRteTypeCol("rte", kNamespace, 0, -1)),
      m_pTrk(new CTrkTypeCol("trk", kNamespace, 0, -1))
{
    SetElementName("gpx");
}

CGpxType::~CGpxType() = default;

CSmartPtr<CMetadataType> CGpxType::GetMetadata() const
{
    return m_pMetadata;
}

void CGpxType::SetMetadata(CMetadataType* pValue)
{
    Throw_IfElementNameDiffers(pValue, "metadata");
    m_pMetadata = pValue;
}

CSmartPtr<CExtensionsType> CGpxType::GetExtensions() const
{
    return m_pExtensions;
}

void CGpxType::SetExtensions(CExtensionsType* pValue)
{
    Throw_IfElementNameDiffers(pValue, "extensions");
    m_pExtensions = pValue;
}

CSmartPtr<CWptTypeCol> CGpxType::GetWpt() const
{
    return m_pWpt;
}

CSmartPtr<CRteTypeCol> CGpxType::GetRte() const
{
    return m_pRte;
}

CSmartPtr<CTrkTypeCol> CGpxType::GetTrk() const
{
    return m_pTrk;
}

void CGpxType::SetVersion(const std::string& value)
{
    if (value != kVersion)
        throw CQnInvalidParamException("The Property [version] is fixed to [1.1], it may not be [" +
                                       value + "].");
    m_strVersion = value;
}

void CGpxType::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Metadata:
        return bRead ? value.SetXmlObject(m_pMetadata.GetPtr())
                     : SetMetadata(GetObjectOf<CMetadataType>(value));
    case Property_Wpt:
        return value.SetXmlCollection(m_pWpt.GetPtr());
    case Property_Rte:
        return value.SetXmlCollection(m_pRte.GetPtr());
    case Property_Trk:
        return value.SetXmlCollection(m_pTrk.GetPtr());
    case Property_Extensions:
        return bRead ? value.SetXmlObject(m_pExtensions.GetPtr())
                     : SetExtensions(GetObjectOf<CExtensionsType>(value));
    case Property_Version:
        return bRead ? value.SetString(m_strVersion) : SetVersion(value.GetString());
    case Property_Creator:
        return Access(bRead, value, m_strCreator);
    default:
        return ThrowUnknownProperty(nProperty);
    }
}

void CGpxType::Init()
{
    m_pMetadata.Reset();
    m_pWpt->Clear();
    m_pRte->Clear();
    m_pTrk->Clear();
    m_pExtensions.Reset();
    m_strVersion = kVersion;
    m_strCreator.clear();
}

} // namespace Gpx
