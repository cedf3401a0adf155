#include "QnXmlLib16/xml/XmlWriter.h"

#include "QnXmlLib16/support/Exceptions.h"

#include <bitset>
#include <utility>

namespace QnXmlLib16 {

namespace {

using NamespaceMap = CXmlWriter::NamespaceMap;

// Makes target equal to source. Rows that both hold stay where they are, and the last row that
// only target holds is handed out in place of being freed: sibling elements that each declare a
// namespace of their own then share one block of memory.
NamespaceMap::node_type AssignRows(NamespaceMap& target, const NamespaceMap& source)
{
    NamespaceMap::node_type spare;
    auto it = target.begin();
    for (const auto& row : source) {
        int iOrder = -1;
        while (it != target.end() && (iOrder = it->first.compare(row.first)) < 0)
            spare = target.extract(it++);
        if (it != target.end() && iOrder == 0)
            (it++)->second = row.second;
        else
            target.emplace_hint(it, row);
    }
    while (it != target.end())
        spare = target.extract(it++);
    return spare;
}

} // namespace

const char* const CXmlWriter::XML_NAMESPACE = "http://www.w3.org/XML/1998/namespace";
const std::string CXmlWriter::XSI_NAMESPACE = "http://www.w3.org/2001/XMLSchema-instance";

CXmlWriter::CXmlWriterContext::CXmlWriterContext(const std::string& strName,
                                                 const std::string& strNamespace,
                                                 CXmlWriterContext* pParent)
    : CInstanceMonitor("CXmlWriterContext"),
      m_strNamespace(strNamespace),
      m_strName(strName),
      m_pParent(nullptr)
{
    if (!pParent)
        throw CQnInvalidParamException("The parent of a nested element may not be NULL.");
    InheritFrom(*pParent);
}

CXmlWriter::CXmlWriterContext::CXmlWriterContext(const std::string& strName,
                                                 const std::string& strNamespace,
                                                 const std::string& strDefaultNamespace,
                                                 const NamespaceMap& mapNamespaces,
                                                 CXmlWriterContext* pParent)
    : CInstanceMonitor("CXmlWriterContext"),
      m_strNamespace(strNamespace),
      m_strName(strName),
      m_pParent(pParent),
      m_strDefaultNamespace(strDefaultNamespace),
      m_pNamespaceMap(new NamespaceMap(mapNamespaces)),
      m_bInheritsScope(false),
      m_bOwnsMap(true),
      m_pScopeOwner(this),
      m_pOuter(nullptr),
      m_pRoot(this)
{}

CXmlWriter::CXmlWriterContext::~CXmlWriterContext()
{
    if (m_bOwnsMap)
        delete m_pNamespaceMap;
    for (CXmlWriterContext* pNext = m_pParent; pNext;) {
        CXmlWriterContext* pDying = pNext;
        pNext = std::exchange(pDying->m_pParent, nullptr);
        delete pDying;
    }
}

void CXmlWriter::CXmlWriterContext::InheritFrom(CXmlWriterContext& parent)
{
    m_iChildCount = 0;
    m_bStartTagOpen = true;
    m_iDepth = parent.m_iDepth + 1;
    m_pParent = &parent;
    m_bHasAttributes = false;
    m_eState = ContextState_None;
    m_bInheritsScope = true;
    m_bOwnsMap = false;
    m_pScopeOwner = &parent.ScopeOwner();
    m_pNamespaceMap = m_pScopeOwner->m_pNamespaceMap;
    m_pOuter = &parent;
    m_pRoot = parent.m_pRoot;
    m_iOpenChildren = 0;
    m_bWalkScopes = false;
    ++parent.m_iOpenChildren;
}

// Makes an ended context, whose parent is still there, ready for InheritFrom. It keeps its memory.
void CXmlWriter::CXmlWriterContext::Park() noexcept
{
    --m_pOuter->m_iOpenChildren;
    m_pOuter = nullptr;
    m_pParent = nullptr;
    if (m_bOwnsMap) {
        m_pSpareMap.reset(m_pNamespaceMap);
        m_bOwnsMap = false;
        m_bInheritsScope = true;
    }
    m_pNamespaceMap = nullptr;
}

CXmlWriter::CXmlWriterContext& CXmlWriter::CXmlWriterContext::WalkToScopeOwner() const
{
    CXmlWriterContext* pContext = m_pOuter;
    while (pContext->m_bInheritsScope)
        pContext = pContext->m_pOuter;
    return *pContext;
}

// The first write to the scope of an inheriting context.
void CXmlWriter::CXmlWriterContext::OwnScope()
{
    const CXmlWriterContext& owner = ScopeOwner();
    if (&owner == this)
        return;
    if (!m_pSpareMap)
        m_pSpareMap = std::make_unique<NamespaceMap>();
    if (NamespaceMap::node_type spare = AssignRows(*m_pSpareMap, *owner.m_pNamespaceMap))
        m_spareRow = std::move(spare);
    m_strDefaultNamespace = owner.m_strDefaultNamespace;

    m_pNamespaceMap = m_pSpareMap.release();
    m_bOwnsMap = true;
    m_bInheritsScope = false;
    m_pScopeOwner = this;
    m_pLastRow = nullptr;
    if (m_iOpenChildren > 0)
        m_pRoot->m_bWalkScopes = true;
}

const CXmlWriter::NamespaceMap& CXmlWriter::CXmlWriterContext::GetNamespaceMap() const
{
    return *ScopeOwner().m_pNamespaceMap;
}

void CXmlWriter::CXmlWriterContext::SetDefaultNamespace(const std::string& strNamespace)
{
    OwnScope();
    m_strDefaultNamespace = strNamespace;
}

void CXmlWriter::CXmlWriterContext::SetNamespaceMapValue(const std::string& strNamespace,
                                                         const std::string& strPrefix)
{
    OwnScope();
    const auto it = m_pNamespaceMap->lower_bound(strNamespace);
    if (it != m_pNamespaceMap->end() && it->first == strNamespace) {
        it->second = strPrefix;
    }
    else if (m_spareRow) {
        m_spareRow.key() = strNamespace;
        m_spareRow.mapped() = strPrefix;
        m_pNamespaceMap->insert(it, std::move(m_spareRow));
    }
    else {
        m_pNamespaceMap->emplace_hint(it, strNamespace, strPrefix);
    }
}

const std::string&
CXmlWriter::CXmlWriterContext::GetNamespaceMapValue(const std::string& strNamespace)
{
    if (const std::string* pPrefix = FindPrefix(strNamespace))
        return *pPrefix;
    // Deliberate: asking for an unknown namespace binds it to the empty prefix for all users of
    // the scope. Pinned by WriterScope.AskingForAnUnknownNamespaceLeavesARowWithTheOwner.
    return (*ScopeOwner().m_pNamespaceMap)[strNamespace];
}

const std::string& CXmlWriter::CXmlWriterContext::GetNamespaceMapValue(const char* pszNamespace)
{
    return GetNamespaceMapValue(std::string(pszNamespace ? pszNamespace : ""));
}

const std::string* CXmlWriter::CXmlWriterContext::FindPrefix(const std::string& strNamespace) const
{
    const CXmlWriterContext& owner = ScopeOwner();
    if (!owner.m_pLastRow || owner.m_pLastRow->first != strNamespace) {
        const auto it = owner.m_pNamespaceMap->find(strNamespace);
        if (it == owner.m_pNamespaceMap->end())
            return nullptr;
        owner.m_pLastRow = &*it;
    }
    return &owner.m_pLastRow->second;
}

void CXmlWriter::CContextFree::operator()(CXmlWriterContext* pContext) const noexcept
{
    if (!pContext->m_bRecyclable) {
        pContext->m_pParent = nullptr; // else the open elements would go with it
        delete pContext;
        return;
    }
    pContext->Park();
    pContext->m_pOuter = std::exchange(m_pWriter->m_pSpares, pContext);
}

CXmlWriter::CXmlWriter(const char* pszClassName)
    : CInstanceMonitor(pszClassName), m_mapNamespaces{{XML_NAMESPACE, "xml"}}
{}

CXmlWriter::~CXmlWriter()
{
    delete m_pContext;
    while (m_pSpares) {
        CXmlWriterContext* pDying = m_pSpares;
        m_pSpares = pDying->m_pOuter;
        delete pDying;
    }
}

void CXmlWriter::Open() {}

void CXmlWriter::Close()
{
    if (m_pContext)
        throw CQnException("An Element has not been closed.");
}

void CXmlWriter::SetDefaultNamespace(const std::string& strNamespace)
{
    if (m_pContext)
        m_pContext->SetDefaultNamespace(strNamespace);
    else
        m_strDefaultNamespace = strNamespace;
}

void CXmlWriter::AddNamespace(const std::string& strPrefix, const std::string& strNamespace)
{
    if (m_pContext)
        m_pContext->SetNamespaceMapValue(strNamespace, strPrefix);
    else
        m_mapNamespaces[strNamespace] = strPrefix;
}

void CXmlWriter::SetContextState(ContextState eState)
{
    if (m_pContext)
        m_pContext->m_eState = eState;
}

std::string CXmlWriter::GetUniquePrefix(const NamespaceMap& mapNamespaces)
{
    // One pass over the rows marks what is taken; trying each candidate on each row would grow
    // with the square of the prefixes in use.
    // Deliberate: behind 'Z' come characters that no XML name begins with, and a document with more
    // than 676 namespaces in one scope is malformed. Pinned by
    // WriterPrefixes.RunOutWithAFailureAfterTheLastCharacter.
    constexpr int kFirst = 'A';
    constexpr int kLetters = 26;
    constexpr int kPrefixes = (0x100 - kFirst) * kLetters;
    std::bitset<kPrefixes> taken;
    for (const auto& row : mapNamespaces) {
        const std::string& strPrefix = row.second;
        if (strPrefix.size() != 2)
            continue;
        const int iHigh = static_cast<unsigned char>(strPrefix[0]) - kFirst;
        const int iLow = static_cast<unsigned char>(strPrefix[1]) - kFirst;
        if (iHigh >= 0 && iLow >= 0 && iLow < kLetters)
            taken.set(static_cast<size_t>(iHigh * kLetters + iLow));
    }
    for (int i = 0; i < kPrefixes; ++i) {
        if (!taken[static_cast<size_t>(i)])
            return NsIntToString(i);
    }
    throw CQnException("No namespace prefix is left.");
}

std::string CXmlWriter::NsIntToString(int i)
{
    return {static_cast<char>('A' + i / 26), static_cast<char>('A' + i % 26)};
}

CXmlWriter::ContextPtr CXmlWriter::NewContext(const std::string& strName,
                                              const std::string& strNamespace)
{
    CXmlWriterContext* pContext;
    if (!m_pContext) {
        pContext = new CXmlWriterContext(strName, strNamespace, m_strDefaultNamespace,
                                         m_mapNamespaces, nullptr);
    }
    else if (!m_pSpares) {
        pContext = new CXmlWriterContext(strName, strNamespace, m_pContext);
        pContext->m_bRecyclable = true;
    }
    else {
        pContext = m_pSpares;
        pContext->m_strName = strName;
        // Most elements share it, and a comparison costs less than a copy.
        if (pContext->m_strNamespace != strNamespace)
            pContext->m_strNamespace = strNamespace;
        m_pSpares = pContext->m_pOuter;
        pContext->InheritFrom(*m_pContext);
    }
    return ContextPtr(pContext, CContextFree{this});
}

void CXmlWriter::PopContext() noexcept
{
    CXmlWriterContext* pEnded = m_pContext;
    m_pContext = pEnded->m_pParent;
    CContextFree{this}(pEnded);
}

const std::string& CXmlWriter::ObtainPrefix(CXmlWriterContext& context,
                                            const std::string& strNamespace, bool& bNew)
{
    const std::string* pPrefix = context.FindPrefix(strNamespace);
    bNew = !pPrefix;
    if (bNew) {
        context.SetNamespaceMapValue(strNamespace, GetUniquePrefix(context.GetNamespaceMap()));
        pPrefix = context.FindPrefix(strNamespace);
    }
    return *pPrefix;
}

} // namespace QnXmlLib16
