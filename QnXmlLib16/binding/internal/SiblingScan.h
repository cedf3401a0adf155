#pragma once

#include <vector>

namespace QnXmlLib16Data {
class CElementInfo;
}

namespace QnXmlLib16 {

class CXmlElement;

// What the pseudo children of one element have found out about its child elements while unknown
// ones are ignored, so that it need not be found out again.
//
// There a group that does not match is tried again from each further sibling, and each time its
// mandatory members look for their elements up to the last sibling: time in the square of their
// number. This class makes it linear, and leaves the same values in all objects, by two facts.
//
// A member that takes nothing from a sibling and is asked again behind it leaves no trace. So one
// that was first asked at a sibling and refused it and those behind, up to another, does the same
// when first asked at any of these. That makes a stretch.
//
// If the first member of a group has such a stretch, and the group does not match in the end, then
// it ends the same way, with the same values read, from each sibling of the stretch and from the
// one behind it.
//
// One object stands for the element that is being read on this thread, the latest for the
// innermost, and one for the document around it. Where none stands, nothing is known and nothing
// is noted.
class CSiblingScan
{
public:
    CSiblingScan();
    CSiblingScan(const CSiblingScan&) = delete;
    CSiblingScan& operator=(const CSiblingScan&) = delete;
    ~CSiblingScan();

    // Stands while a pseudo element is read.
    class CGroup
    {
    public:
        CGroup();
        CGroup(const CGroup&) = delete;
        CGroup& operator=(const CGroup&) = delete;
        ~CGroup();

        // Whether the object is dropped, with all that it has read, unless it matches.
        static bool IsDropped();
    };

    // Stands while objects are read that are dropped unless they match, if they are pseudo
    // elements.
    class CDropping
    {
    public:
        CDropping();
        CDropping(const CDropping&) = delete;
        CDropping& operator=(const CDropping&) = delete;
        ~CDropping();

    private:
        int m_nOuterDepth;
    };

    // The member refused pFrom and what follows up to pUntil, null if there was no end to it.
    static void NoteRefused(const QnXmlLib16Data::CElementInfo& member, const CXmlElement* pFrom,
                            CXmlElement* pUntil);

    // The first sibling from pCursor on that the member may not refuse.
    static CXmlElement* SkipRefused(const QnXmlLib16Data::CElementInfo& member,
                                    CXmlElement* pCursor);

    // The innermost group, whose first member this is, did not match from pStart on.
    static void NoteMismatch(const QnXmlLib16Data::CElementInfo& firstMember,
                             const CXmlElement* pStart);

    // Whether that is known to happen.
    static bool IsMismatch(const QnXmlLib16Data::CElementInfo& firstMember,
                           const CXmlElement* pStart);

    // To be called before an entry is asked; and if it has refused pAsked, what to ask it next:
    // behind all from which the group that it stands for is known to end the same way.
    static void ForgetLastMismatch();
    static CXmlElement* NextToAsk(const CXmlElement* pAsked);

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
    int m_nDepth = 0;        // of groups inside each other
    int m_nDroppedDepth = 0; // that of objects that are dropped; 0 for none
    // The group that did not match last: its depth, 0 for none, and its stretch.
    int m_nMismatchDepth = 0;
    const CXmlElement* m_pMismatchStart = nullptr;
    CXmlElement* m_pMismatchUntil = nullptr;
    CSiblingScan* m_pOuter;
};

} // namespace QnXmlLib16
