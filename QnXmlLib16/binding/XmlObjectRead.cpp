#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/binding/XmlObjectBase.h"
#include "QnXmlLib16/binding/internal/Input.h"
#include "QnXmlLib16/binding/internal/SiblingScan.h"
#include "QnXmlLib16/collections/Element.h"
#include "QnXmlLib16/licensing/LicenceGate.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/xml/XmlElement.h"

namespace QnXmlLib16 {

namespace {

void ReadElement(CXmlObjectBase& object, CXmlElement* pElement,
                 const CSerializationContext& context)
{
    if (!pElement)
        throw CQnInvalidParamException("The element may not be NULL");
    // A setter may read one document in the middle of another, into a class without an element of
    // its own: what is found out about siblings then goes with their tree.
    CXmlElement* const pFirst = pElement->GetFirstElement();
    const CSiblingScan scan(pFirst);
    CXmlObjectBase::FromXml_Int(&object, pElement, pFirst, context);
}

} // namespace

void CXmlObjectBase::FromXmlFile(const char* pszPath, const CSerializationContext& context)
{
    CLicenceGate::GetGate()->Consult();
    CInput document(context);
    document.Load(pszPath);
    ReadElement(*this, document.TakeDocumentElement(), context);
}

void CXmlObjectBase::FromXml(const char* pszXml, const CSerializationContext& context)
{
    CLicenceGate::GetGate()->Consult();
    CInput document(context);
    document.LoadXmlInPlace(pszXml);
    ReadElement(*this, document.TakeDocumentElement(), context);
}

void CXmlObjectBase::FromXml(const wchar_t* pszXml, const CSerializationContext& context)
{
    CLicenceGate::GetGate()->Consult();
    CInput document(context);
    document.LoadXml(pszXml);
    ReadElement(*this, document.TakeDocumentElement(), context);
}

void CXmlObjectBase::FromXmlStream(unsigned char* pData, unsigned long nLength,
                                   const CSerializationContext& context)
{
    CLicenceGate::GetGate()->Consult();
    CInput document(context);
    document.LoadXmlStreamInPlace(pData, nLength);
    ReadElement(*this, document.TakeDocumentElement(), context);
}

void CXmlObjectBase::FromXmlStream(const CBinaryData& data, const CSerializationContext& context)
{
    FromXmlStream(data.GetData(), data.GetLength(), context);
}

void CXmlObjectBase::FromXmlElement(const CXmlElement* pElement,
                                    const CSerializationContext& context)
{
    CLicenceGate::GetGate()->Consult();
    ReadElement(*this, const_cast<CXmlElement*>(pElement), context);
}

void CXmlObjectBase::FromXmlElement(const CElement* pElement, const CSerializationContext& context)
{
    CLicenceGate::GetGate()->Consult();
    if (!pElement)
        throw CQnInvalidParamException("The element may not be NULL");
    const std::string strXml =
        pElement->ToXml(false, false, EOLType_LF, CSerializationContext::m_defaultContext);
    FromXml(strXml.c_str(), context);
}

} // namespace QnXmlLib16
