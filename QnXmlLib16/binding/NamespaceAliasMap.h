#pragma once

#include "QnXmlLib16/support/Export.h"

#include <map>
#include <string>

namespace QnXmlLib16 {

// The prefixes that the root element declares: one alias for each namespace, sorted by namespace.
// An alias may stand for several namespaces; nothing checks that it doesn't.
// One map belongs to one thread at a time, reading included.
class QNXML_API CNamespaceAliasMap
{
public:
    CNamespaceAliasMap();
    CNamespaceAliasMap(const CNamespaceAliasMap&);
    CNamespaceAliasMap(CNamespaceAliasMap&&) noexcept;
    CNamespaceAliasMap& operator=(const CNamespaceAliasMap&);
    CNamespaceAliasMap& operator=(CNamespaceAliasMap&&) noexcept;
    virtual ~CNamespaceAliasMap();

    // A second alias for a namespace replaces the first.
    void Add(const char* pszAlias, const char* pszNamespace);
    // Does nothing for a namespace that is not there.
    void RemoveNamespace(const char* pszNamespace);

    // The first namespace, in sorted order, that has this alias.
    // Throws CQnException "Namespace alias [%s] not found".
    std::string GetNamespaceFromAlias(const char* pszAlias) const;

    // Asking for a namespace that is not there adds it with an empty alias: it then counts and is
    // declared on the next root element. Ask DoesNamespaceExist first to avoid that.
    std::string GetAliasFromNamespace(const char* pszNamespace) const;

    bool DoesNamespaceExist(const char* pszNamespace) const;
    bool DoesAliasExist(const char* pszAlias) const;

    int GetNamespaceCount() const;
    // The namespace at a place of the sorted order, from 0; an index outside gives an empty text.
    std::string GetNamespaceAt(int iIndex) const;

private:
    // Namespace to alias. Mutable, since a look-up by namespace adds.
    mutable std::map<std::string, std::string> m_mapAliases;
};

} // namespace QnXmlLib16
