#include "examples/gpx/model/TrksegType.h"

#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "examples/gpx/model/ExtensionsType.h"
#include "examples/gpx/model/GpxClassFactory.h"
#include "examples/gpx/model/WptType.h"

using namespace GeneratedSupport;
using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Gpx {

const CTrksegType::CMetaData& CTrksegType::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(DescribeSequence("trksegType"));
        table.Add(
            new CElementInfoSeqClsCol("trkpt", kNamespace, Property_Trkpt, XmlElementType_Element));
        table.Add(new CElementInfoSeqClsOpt("extensions", kNamespace, Property_Extensions,
                                            XmlElementType_Element, CGpxClassFactory::Create,
                                            CGpxClassFactory::Class_ExtensionsType));
    });
    return data;
}

CTrksegType::CTrksegType() : m_pTrkpt(new CWptTypeCol("trkpt", kNamespace, 0, -1))
{
    SetElementName("trkseg");
}

CTrksegType::~CTrksegType() = default;

CSmartPtr<CExtensionsType> CTrksegType::GetExtensions() const
{
    return m_pExtensions;
}

void CTrksegType::SetExtensions(CExtensionsType* pValue)
{
    Throw_IfElementNameDiffers(pValue, "extensions");
    m_pExtensions = pValue;
}

CSmartPtr<CWptTypeCol> CTrksegType::GetTrkpt() const
{
    return m_pTrkpt;
}

void CTrksegType::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Trkpt:
        return value.SetXmlCollection(m_pTrkpt.GetPtr());
    case Property_Extensions:
        return bRead ? value.SetXmlObject(m_pExtensions.GetPtr())
                     : SetExtensions(GetObjectOf<CExtensionsType>(value));
    default:
        return ThrowUnknownProperty(nProperty);
    }
}

void CTrksegType::Init()
{
    m_pTrkpt->Clear();
    m_pExtensions.Reset();
}

CSmartPtr<CTrksegType> CTrksegTypeCol::Add()
{
    const CSmartPtr<CTrksegType> pItem = new CTrksegType;
    pItem->SetElementName(m_strElementName.c_str());
    Add(pItem.GetPtr());
    return pItem;
}

void CTrksegTypeCol::Add(CTrksegType* pItem)
{
    Append(pItem);
}

CSmartPtr<CTrksegType> CTrksegTypeCol::Item(int iIndex) const
{
    return static_cast<CTrksegType*>(GetNodeAtIndex(iIndex)->GetItem());
}

CSmartPtr<CXmlObjectBase> CTrksegTypeCol::CreateItem() const
{
    return new CTrksegType;
}

} // namespace Gpx
