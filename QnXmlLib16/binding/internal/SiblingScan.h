#pragma once

#include <vector>

namespace QnXmlLib16Data {
class CElementInfo;
}

namespace QnXmlLib16 {

class CXmlElement;

// What pseudo children of one element have found out about its children while unknown elements are
// ignored, so that it need not be found out again.
//
// There a pseudo child that does not match is asked again at each further sibling, and each time
// its mandatory members look for their elements up to the last sibling. That would take time in the
// square of the number of siblings. But a member that was first asked at one sibling and refused it
// and those behind it, up to another one, does the same when first asked at any of these: nothing
// is read by a refusal. And if the first member of a group does so, the group ends the same way
// from each of these siblings.
//
// One object stands for the element that is being read on this thread, the latest one for the
// innermost. Where none stands, nothing is known and nothing is noted.
class CSiblingScan
{
public:
    CSiblingScan();
    CSiblingScan(const CSiblingScan&) = delete;
    CSiblingScan& operator=(const CSiblingScan&) = delete;
    ~CSiblingScan();

    // The member refused pFrom and what follows up to pUntil, null if there was no end to it.
    static void NoteRefused(const QnXmlLib16Data::CElementInfo& member, const CXmlElement* pFrom,
                            CXmlElement* pUntil);

    // The first sibling from pCursor on that the member may not refuse.
    static CXmlElement* SkipRefused(const QnXmlLib16Data::CElementInfo& member,
                                    CXmlElement* pCursor);

    // The group whose first member this is did not match from pStart on.
    static void NoteMismatch(const QnXmlLib16Data::CElementInfo& firstMember,
                             const CXmlElement* pStart);

    // Whether that is known to happen from pStart on.
    static bool IsMismatch(const QnXmlLib16Data::CElementInfo& firstMember,
                           const CXmlElement* pStart);

private:
    // Invariant: pUntil is pFrom, or one of the siblings behind it, or null for their end.
    struct Stretch
    {
        const QnXmlLib16Data::CElementInfo* pMember;
        const CXmlElement* pFrom;
        CXmlElement* pUntil;
        bool bMismatch; // of the group whose first member this is, from any of these and pUntil
    };

    static Stretch* Find(const QnXmlLib16Data::CElementInfo& member);
    static bool Advance(Stretch& stretch, const CXmlElement* pCursor);

    std::vector<Stretch> m_vecStretches;
    CSiblingScan* m_pOuter;
};

} // namespace QnXmlLib16
