#include "QnXmlLib16/binding/ClassfactoryBase.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"

namespace QnXmlLib16 {

namespace {

const std::string& TypeAttribute(const CXmlElement* pElement)
{
    if (!pElement)
        throw CQnInvalidParamException("The element may not be NULL");
    return pElement->GetAttribute("type", "http://www.w3.org/2001/XMLSchema-instance");
}

} // namespace

CClassfactoryBase::~CClassfactoryBase() = default;

std::string CClassfactoryBase::GetElementType(CXmlElement* pElement)
{
    const std::string& strType = TypeAttribute(pElement);
    const std::string::size_type iColon = strType.find(':');
    return iColon == std::string::npos ? strType : strType.substr(iColon + 1);
}

std::string CClassfactoryBase::GetElementTypeNamespaceUri(CXmlElement* pElement)
{
    const std::string& strType = TypeAttribute(pElement);
    const std::string::size_type iColon = strType.find(':');
    const CXmlDocument* const pDocument = pElement->GetDocument();
    if (iColon != std::string::npos && pDocument) {
        std::string strNamespace =
            pDocument->LookupNamespaceFromAlias(strType.substr(0, iColon).c_str());
        if (!strNamespace.empty())
            return strNamespace;
    }
    return pElement->GetNamespaceURI();
}

} // namespace QnXmlLib16
