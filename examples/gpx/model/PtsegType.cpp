#include "examples/gpx/model/PtsegType.h"

#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "examples/gpx/model/PtType.h"

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Gpx {

const CPtsegType::CMetaData& CPtsegType::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(DescribeSequence("ptsegType"));
        table.Add(new CElementInfoSeqClsCol("pt", kNamespace, Property_Pt, XmlElementType_Element));
    });
    return data;
}

CPtsegType::CPtsegType() : m_pPt(new CPtTypeCol("pt", kNamespace, 0, -1))
{
    SetElementName("ptseg");
}

CPtsegType::~CPtsegType() = default;

CSmartPtr<CPtTypeCol> CPtsegType::GetPt() const
{
    return m_pPt;
}

void CPtsegType::AccessProperty(int nProperty, bool, QnVariant& value)
{
    switch (nProperty) {
    case Property_Pt:
        return value.SetXmlCollection(m_pPt.GetPtr());
    default:
        return ThrowUnknownProperty(nProperty);
    }
}

void CPtsegType::Init()
{
    m_pPt->Clear();
}

} // namespace Gpx
