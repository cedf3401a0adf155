#include "QnXmlLib16/json/JsonContext.h"

namespace QnXmlLib16 {

CJsonContext::CJsonContext() = default;

CJsonContext::~CJsonContext() = default;

JsonRoundTrip CJsonContext::GetSupportRoundtrip() const
{
    return m_eRoundTrip;
}

void CJsonContext::SetSupportRoundtrip(JsonRoundTrip eRoundTrip)
{
    m_eRoundTrip = eRoundTrip;
}

const std::string& CJsonContext::GetRootElementName() const
{
    return m_strRootElementName;
}

void CJsonContext::SetRootElementName(const char* pszName)
{
    m_strRootElementName = pszName ? pszName : "";
}

bool CJsonContext::GetAllowComments() const
{
    return m_bAllowComments;
}

void CJsonContext::GetAllowComments(bool bAllow)
{
    m_bAllowComments = bAllow;
}

} // namespace QnXmlLib16
