#include "QnXmlLib16/binding/SerializationContext.h"

#include "QnXmlLib16/support/Exceptions.h"

#include <cstring>

namespace QnXmlLib16 {

namespace {

// The same words for both directions, though they fit one of them only.
[[noreturn]] void ThrowCanNotIgnoreBoth()
{
    throw CQnInvalidStateException(
        "The parser can only ignore additional elements, or ignore the fact that some required "
        "ones are missing, you can not ignore both\n"
        "Set IgnoreMissingMandatoryElements to false before setting IgnoreUnknownElements to "
        "true");
}

} // namespace

void CSerializationContext::SetIgnoreUnknownElements(bool bValue)
{
    if (bValue && m_settings.m_bIgnoreMissingMandatoryElements)
        ThrowCanNotIgnoreBoth();
    m_settings.m_bIgnoreUnknownElements = bValue;
}

void CSerializationContext::SetIgnoreMissingMandatoryElements(bool bValue)
{
    // Deliberate: the words tell to set the flag to false that is being set to true. Pinned by
    // SerializationContext.TheTwoRelaxationsOfElementsExcludeEachOther.
    if (bValue && m_settings.m_bIgnoreUnknownElements)
        ThrowCanNotIgnoreBoth();
    m_settings.m_bIgnoreMissingMandatoryElements = bValue;
}

void CSerializationContext::SetDefaultNamespaceURI(const char* pszURI)
{
    m_settings.m_strDefaultNamespaceURI = pszURI ? pszURI : "";
}

void CSerializationContext::SetInLineSchema(const char* pszSchema)
{
    m_settings.m_strInLineSchema = pszSchema ? pszSchema : "";
}

void CSerializationContext::SetIndentChars(const char* pszValue)
{
    const char* const pszIndent = pszValue ? pszValue : "";
    if (pszIndent[std::strspn(pszIndent, "\t ")] != '\0')
        throw CQnInvalidParamException(
            "IndentChars can only contain Whitespace characters, i.e. \\t or spaces");
    m_settings.m_strIndentChars = pszIndent;
}

} // namespace QnXmlLib16
