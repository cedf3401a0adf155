#include "examples/gpx/model/PersonType.h"

#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "examples/gpx/model/EmailType.h"
#include "examples/gpx/model/GpxClassFactory.h"
#include "examples/gpx/model/LinkType.h"
#include "examples/gpx/model/SimpleTypes.h"

using namespace GeneratedSupport;
using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Gpx {

const CPersonType::CMetaData& CPersonType::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(DescribeSequence("personType"));
        table.Add(OptionalElement("name", Property_Name, StringType()));
        table.Add(new CElementInfoSeqClsOpt("email", kNamespace, Property_Email,
                                            XmlElementType_Element, CGpxClassFactory::Create,
                                            CGpxClassFactory::Class_EmailType));
        table.Add(new CElementInfoSeqClsOpt("link", kNamespace, Property_Link,
                                            XmlElementType_Element, CGpxClassFactory::Create,
                                            CGpxClassFactory::Class_LinkType));
    });
    return data;
}

CPersonType::CPersonType()
{
    SetElementName("author");
}

CPersonType::~CPersonType() = default;

CSmartPtr<CEmailType> CPersonType::GetEmail() const
{
    return m_pEmail;
}

void CPersonType::SetEmail(CEmailType* pValue)
{
    Throw_IfElementNameDiffers(pValue, "email");
    m_pEmail = pValue;
}

CSmartPtr<CLinkType> CPersonType::GetLink() const
{
    return m_pLink;
}

void CPersonType::SetLink(CLinkType* pValue)
{
    Throw_IfElementNameDiffers(pValue, "link");
    m_pLink = pValue;
}

void CPersonType::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Name:
        return Access(bRead, value, m_name);
    case Property_Email:
        return bRead ? value.SetXmlObject(m_pEmail.GetPtr())
                     : SetEmail(GetObjectOf<CEmailType>(value));
    case Property_Link:
        return bRead ? value.SetXmlObject(m_pLink.GetPtr())
                     : SetLink(GetObjectOf<CLinkType>(value));
    default:
        return ThrowUnknownProperty(nProperty);
    }
}

void CPersonType::Init()
{
    m_name.reset();
    m_pEmail.Reset();
    m_pLink.Reset();
}

} // namespace Gpx
