#include "QnXmlLib16/binding/internal/SiblingScan.h"

#include "QnXmlLib16/xml/XmlElement.h"

using QnXmlLib16Data::CElementInfo;

namespace QnXmlLib16 {

namespace {

thread_local CSiblingScan* t_pInnermost = nullptr;

} // namespace

CSiblingScan::CSiblingScan() : m_pOuter(t_pInnermost)
{
    t_pInnermost = this;
}

CSiblingScan::~CSiblingScan()
{
    t_pInnermost = m_pOuter;
}

CSiblingScan::CGroup::CGroup()
{
    if (t_pInnermost)
        ++t_pInnermost->m_nDepth;
}

CSiblingScan::CGroup::~CGroup()
{
    if (t_pInnermost)
        --t_pInnermost->m_nDepth;
}

bool CSiblingScan::CGroup::IsDropped()
{
    return t_pInnermost && t_pInnermost->m_nDroppedDepth == t_pInnermost->m_nDepth;
}

CSiblingScan::CDropping::CDropping() : m_nOuterDepth(0)
{
    if (t_pInnermost) {
        m_nOuterDepth = t_pInnermost->m_nDroppedDepth;
        t_pInnermost->m_nDroppedDepth = t_pInnermost->m_nDepth + 1;
    }
}

CSiblingScan::CDropping::~CDropping()
{
    if (t_pInnermost)
        t_pInnermost->m_nDroppedDepth = m_nOuterDepth;
}

void CSiblingScan::NoteRefused(const CElementInfo& member, const CXmlElement* pFrom,
                               CXmlElement* pUntil)
{
    if (Stretch* const pStretch = Find(member))
        *pStretch = {&member, pFrom, pUntil, false};
    else if (t_pInnermost)
        t_pInnermost->m_vecStretches.push_back({&member, pFrom, pUntil, false});
}

CXmlElement* CSiblingScan::SkipRefused(const CElementInfo& member, CXmlElement* pCursor)
{
    Stretch* const pStretch = Find(member);
    return pStretch && Advance(*pStretch, pCursor) ? pStretch->pUntil : pCursor;
}

void CSiblingScan::NoteMismatch(const CElementInfo& firstMember, const CXmlElement* pStart)
{
    Stretch* const pStretch = Find(firstMember);
    if (!pStretch || pStretch->pFrom != pStart)
        return;
    pStretch->bMismatch = true;
    t_pInnermost->m_nMismatchDepth = t_pInnermost->m_nDepth;
    t_pInnermost->m_pMismatchStart = pStart;
    t_pInnermost->m_pMismatchUntil = pStretch->pUntil;
}

bool CSiblingScan::IsMismatch(const CElementInfo& firstMember, const CXmlElement* pStart)
{
    Stretch* const pStretch = Find(firstMember);
    return pStretch && pStretch->bMismatch && Advance(*pStretch, pStart);
}

void CSiblingScan::ForgetLastMismatch()
{
    if (t_pInnermost)
        t_pInnermost->m_nMismatchDepth = 0;
}

CXmlElement* CSiblingScan::NextToAsk(const CXmlElement* pAsked)
{
    const CXmlElement* pLast = pAsked;
    if (t_pInnermost && t_pInnermost->m_nMismatchDepth == t_pInnermost->m_nDepth + 1 &&
        t_pInnermost->m_pMismatchStart == pAsked)
        pLast = t_pInnermost->m_pMismatchUntil;
    return pLast ? pLast->GetNextSiblingElement() : nullptr;
}

CSiblingScan::Stretch* CSiblingScan::Find(const CElementInfo& member)
{
    if (t_pInnermost) {
        for (Stretch& stretch : t_pInnermost->m_vecStretches) {
            if (stretch.pMember == &member)
                return &stretch;
        }
    }
    return nullptr;
}

// Shortens the stretch to what begins at pCursor, or to nothing if pCursor is not in it. False in
// the second case. Cursors move forward, so all walks together are no longer than the stretch.
bool CSiblingScan::Advance(Stretch& stretch, const CXmlElement* pCursor)
{
    while (stretch.pFrom != pCursor && stretch.pFrom != stretch.pUntil)
        stretch.pFrom = stretch.pFrom->GetNextSiblingElement();
    return stretch.pFrom == pCursor;
}

} // namespace QnXmlLib16
