#include "QnXmlLib16/binding/internal/SiblingScan.h"

#include "QnXmlLib16/xml/XmlElement.h"

#include <algorithm>
#include <numeric>

using QnXmlLib16Data::CElementInfo;

namespace QnXmlLib16 {

namespace {

thread_local CSiblingScan* t_pInnermost = nullptr;

// So few that going through them costs next to nothing.
constexpr std::size_t kMostNotes = 8;

} // namespace

CSiblingScan::CSiblingScan(CXmlElement* pFirst) : m_pFirst(pFirst), m_pOuter(t_pInnermost)
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
                               const CXmlElement* pUntil)
{
    if (t_pInnermost)
        t_pInnermost->Add({&member, pFrom, pUntil, false});
}

CXmlElement* CSiblingScan::SkipRefused(const CElementInfo& member, CXmlElement* pCursor)
{
    return t_pInnermost ? t_pInnermost->Skip(t_pInnermost->m_refused, member, pCursor) : pCursor;
}

void CSiblingScan::NoteMismatch(const CElementInfo& firstMember, const CXmlElement* pStart)
{
    if (!t_pInnermost || !pStart)
        return;
    t_pInnermost->Add({&firstMember, pStart, nullptr, true});
    t_pInnermost->m_nMismatchDepth = t_pInnermost->m_nDepth;
    t_pInnermost->m_pMismatchMember = &firstMember;
    t_pInnermost->m_pMismatchStart = pStart;
}

bool CSiblingScan::IsMismatch(const CElementInfo& firstMember, CXmlElement* pStart)
{
    return t_pInnermost &&
           t_pInnermost->Skip(t_pInnermost->m_mismatch, firstMember, pStart) != pStart;
}

void CSiblingScan::ForgetLastMismatch()
{
    if (t_pInnermost)
        t_pInnermost->m_nMismatchDepth = 0;
}

CXmlElement* CSiblingScan::NextToAsk(CXmlElement* pAsked)
{
    const CXmlElement* pLast = pAsked;
    if (t_pInnermost && t_pInnermost->m_nMismatchDepth == t_pInnermost->m_nDepth + 1 &&
        t_pInnermost->m_pMismatchStart == pAsked)
        pLast = SkipRefused(*t_pInnermost->m_pMismatchMember, pAsked);
    return pLast ? pLast->GetNextSiblingElement() : nullptr;
}

void CSiblingScan::Add(const Note& note)
{
    m_vecNotes.push_back(note);
    if (m_vecNotes.size() >= kMostNotes)
        Learn();
}

CXmlElement* CSiblingScan::Skip(Known& known, const CElementInfo& member, CXmlElement* pCursor)
{
    const auto isAboutMember = [&](const Note& note) { return note.pMember == &member; };
    if (std::any_of(m_vecNotes.begin(), m_vecNotes.end(), isAboutMember))
        Learn();
    const auto entry = known.find(&member);
    if (entry == known.end())
        return pCursor;
    const auto number = m_numbers.find(pCursor);
    return number == m_numbers.end() ? pCursor
                                     : m_vecSiblings[Follow(entry->second, number->second)];
}

void CSiblingScan::Learn()
{
    if (m_vecSiblings.empty())
        NumberSiblings();
    const std::size_t nEnd = m_vecSiblings.size() - 1;
    for (const Note& note : m_vecNotes) {
        const auto from = m_numbers.find(note.pFrom);
        if (from == m_numbers.end())
            continue; // of an element whose class is no generated one
        Steps& refused = GetSteps(m_refused, note.pMember);
        Steps& steps = note.bMismatch ? GetSteps(m_mismatch, note.pMember) : refused;
        const std::size_t nUntil = note.bMismatch
                                       ? std::min(Follow(refused, from->second) + 1, nEnd)
                                       : m_numbers.at(note.pUntil);
        // What is known already is stepped over, so that all notes together take linear time.
        for (std::size_t i = from->second; i < nUntil;) {
            const std::size_t nNext = std::max(steps[i], i + 1);
            steps[i] = std::max(steps[i], nUntil);
            i = nNext;
        }
    }
    m_vecNotes.clear();
}

CSiblingScan::Steps& CSiblingScan::GetSteps(Known& known, const CElementInfo* pMember) const
{
    Steps& steps = known[pMember];
    if (steps.empty()) {
        steps.resize(m_vecSiblings.size());
        std::iota(steps.begin(), steps.end(), std::size_t(0));
    }
    return steps;
}

std::size_t CSiblingScan::Follow(Steps& steps, std::size_t nSibling)
{
    while (steps[nSibling] != nSibling)
        nSibling = steps[nSibling] = steps[steps[nSibling]];
    return nSibling;
}

void CSiblingScan::NumberSiblings()
{
    std::vector<CXmlElement*> vecSiblings;
    for (CXmlElement* p = m_pFirst; p; p = p->GetNextSiblingElement())
        vecSiblings.push_back(p);
    vecSiblings.push_back(nullptr);
    m_numbers.reserve(vecSiblings.size());
    for (std::size_t i = 0; i < vecSiblings.size(); ++i)
        m_numbers.emplace(vecSiblings[i], i);
    m_vecSiblings.swap(vecSiblings);
}

} // namespace QnXmlLib16
