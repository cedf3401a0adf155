#include "examples/gpx/model/ExtensionsType.h"

#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "QnXmlLib16/collections/ElementCol.h"

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Gpx {

const CExtensionsType::CMetaData& CExtensionsType::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(DescribeSequence("extensionsType"));
        table.Add(new CElementInfoSeqUntpdCol("AnyElement", "##other", Property_AnyElement));
    });
    return data;
}

CExtensionsType::CExtensionsType()
    : m_pAnyElement(new CElementCol("", "##other", kNamespace, 0, -1))
{
    SetElementName("extensions");
}

CExtensionsType::~CExtensionsType() = default;

CSmartPtr<CElementCol> CExtensionsType::GetAnyElement() const
{
    return m_pAnyElement;
}

void CExtensionsType::AccessProperty(int nProperty, bool, QnVariant& value)
{
    switch (nProperty) {
    case Property_AnyElement:
        return value.SetXmlCollection(m_pAnyElement.GetPtr());
    default:
        return ThrowUnknownProperty(nProperty);
    }
}

void CExtensionsType::Init()
{
    m_pAnyElement->Clear();
}

} // namespace Gpx
