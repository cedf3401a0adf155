#include "examples/gpx/model/MetadataType.h"

#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "examples/gpx/model/BoundsType.h"
#include "examples/gpx/model/CopyrightType.h"
#include "examples/gpx/model/ExtensionsType.h"
#include "examples/gpx/model/GpxClassFactory.h"
#include "examples/gpx/model/LinkType.h"
#include "examples/gpx/model/PersonType.h"
#include "examples/gpx/model/SimpleTypes.h"

using namespace GeneratedSupport;
using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Gpx {

const CMetadataType::CMetaData& CMetadataType::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(DescribeSequence("metadataType"));
        table.Add(OptionalElement("name", Property_Name, StringType()));
        table.Add(OptionalElement("desc", Property_Desc, StringType()));
        table.Add(new CElementInfoSeqClsOpt("author", kNamespace, Property_Author,
                                            XmlElementType_Element, CGpxClassFactory::Create,
                                            CGpxClassFactory::Class_PersonType));
        table.Add(new CElementInfoSeqClsOpt("copyright", kNamespace, Property_Copyright,
                                            XmlElementType_Element, CGpxClassFactory::Create,
                                            CGpxClassFactory::Class_CopyrightType));
        table.Add(
            new CElementInfoSeqClsCol("link", kNamespace, Property_Link, XmlElementType_Element));
        table.Add(OptionalElement("time", Property_Time, DateTimeType()));
        table.Add(OptionalElement("keywords", Property_Keywords, StringType()));
        table.Add(new CElementInfoSeqClsOpt("bounds", kNamespace, Property_Bounds,
                                            XmlElementType_Element, CGpxClassFactory::Create,
                                            CGpxClassFactory::Class_BoundsType));
        table.Add(new CElementInfoSeqClsOpt("extensions", kNamespace, Property_Extensions,
                                            XmlElementType_Element, CGpxClassFactory::Create,
                                            CGpxClassFactory::Class_ExtensionsType));
    });
    return data;
}

CMetadataType::CMetadataType() : m_pLink(new CLinkTypeCol("link", kNamespace, 0, -1))
{
    SetElementName("metadata");
}

CMetadataType::~CMetadataType() = default;

CSmartPtr<CPersonType> CMetadataType::GetAuthor() const
{
    return m_pAuthor;
}

void CMetadataType::SetAuthor(CPersonType* pValue)
{
    Throw_IfElementNameDiffers(pValue, "author");
    m_pAuthor = pValue;
}

CSmartPtr<CCopyrightType> CMetadataType::GetCopyright() const
{
    return m_pCopyright;
}

void CMetadataType::SetCopyright(CCopyrightType* pValue)
{
    Throw_IfElementNameDiffers(pValue, "copyright");
    m_pCopyright = pValue;
}

CSmartPtr<CBoundsType> CMetadataType::GetBounds() const
{
    return m_pBounds;
}

void CMetadataType::SetBounds(CBoundsType* pValue)
{
    Throw_IfElementNameDiffers(pValue, "bounds");
    m_pBounds = pValue;
}

CSmartPtr<CExtensionsType> CMetadataType::GetExtensions() const
{
    return m_pExtensions;
}

void CMetadataType::SetExtensions(CExtensionsType* pValue)
{
    Throw_IfElementNameDiffers(pValue, "extensions");
    m_pExtensions = pValue;
}

CSmartPtr<CLinkTypeCol> CMetadataType::GetLink() const
{
    return m_pLink;
}

void CMetadataType::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Name:
        return Access(bRead, value, m_name);
    case Property_Desc:
        return Access(bRead, value, m_desc);
    case Property_Author:
        return bRead ? value.SetXmlObject(m_pAuthor.GetPtr())
                     : SetAuthor(GetObjectOf<CPersonType>(value));
    case Property_Copyright:
        return bRead ? value.SetXmlObject(m_pCopyright.GetPtr())
                     : SetCopyright(GetObjectOf<CCopyrightType>(value));
    case Property_Link:
        return value.SetXmlCollection(m_pLink.GetPtr());
    case Property_Time:
        return Access(bRead, value, m_time);
    case Property_Keywords:
        return Access(bRead, value, m_keywords);
    case Property_Bounds:
        return bRead ? value.SetXmlObject(m_pBounds.GetPtr())
                     : SetBounds(GetObjectOf<CBoundsType>(value));
    case Property_Extensions:
        return bRead ? value.SetXmlObject(m_pExtensions.GetPtr())
                     : SetExtensions(GetObjectOf<CExtensionsType>(value));
    default:
        return ThrowUnknownProperty(nProperty);
    }
}

void CMetadataType::Init()
{
    m_name.reset();
    m_desc.reset();
    m_pAuthor.Reset();
    m_pCopyright.Reset();
    m_pLink->Clear();
    m_time.reset();
    m_keywords.reset();
    m_pBounds.Reset();
    m_pExtensions.Reset();
}

} // namespace Gpx
