#include "QnXmlLib16/binding/NamespaceAliasMap.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/support/internal/TextOrEmpty.h"

#include <algorithm>
#include <iterator>

namespace QnXmlLib16 {

CNamespaceAliasMap::CNamespaceAliasMap() = default;
CNamespaceAliasMap::CNamespaceAliasMap(const CNamespaceAliasMap&) = default;
CNamespaceAliasMap::CNamespaceAliasMap(CNamespaceAliasMap&&) noexcept = default;
CNamespaceAliasMap& CNamespaceAliasMap::operator=(const CNamespaceAliasMap&) = default;
CNamespaceAliasMap& CNamespaceAliasMap::operator=(CNamespaceAliasMap&&) noexcept = default;
CNamespaceAliasMap::~CNamespaceAliasMap() = default;

void CNamespaceAliasMap::Add(const char* pszAlias, const char* pszNamespace)
{
    m_mapAliases[OrEmpty(pszNamespace)] = OrEmpty(pszAlias);
}

void CNamespaceAliasMap::RemoveNamespace(const char* pszNamespace)
{
    m_mapAliases.erase(OrEmpty(pszNamespace));
}

std::string CNamespaceAliasMap::GetNamespaceFromAlias(const char* pszAlias) const
{
    const char* const pszWanted = OrEmpty(pszAlias);
    for (const auto& row : m_mapAliases) {
        if (row.second == pszWanted)
            return row.first;
    }
    throw CQnException(FormatString("Namespace alias [%s] not found", pszWanted));
}

std::string CNamespaceAliasMap::GetAliasFromNamespace(const char* pszNamespace) const
{
    // Deliberate: the look-up adds an unknown namespace with an empty alias, which the next root
    // element then declares. Pinned by NamespaceAliases.AskingForAnUnknownNamespaceAddsIt.
    return m_mapAliases[OrEmpty(pszNamespace)];
}

bool CNamespaceAliasMap::DoesNamespaceExist(const char* pszNamespace) const
{
    return m_mapAliases.count(OrEmpty(pszNamespace)) != 0;
}

bool CNamespaceAliasMap::DoesAliasExist(const char* pszAlias) const
{
    const char* const pszWanted = OrEmpty(pszAlias);
    return std::any_of(m_mapAliases.begin(), m_mapAliases.end(),
                       [pszWanted](const auto& row) { return row.second == pszWanted; });
}

int CNamespaceAliasMap::GetNamespaceCount() const
{
    return static_cast<int>(m_mapAliases.size());
}

std::string CNamespaceAliasMap::GetNamespaceAt(int iIndex) const
{
    if (iIndex < 0 || iIndex >= GetNamespaceCount())
        return {};
    return std::next(m_mapAliases.begin(), iIndex)->first;
}

} // namespace QnXmlLib16
