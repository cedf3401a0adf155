#pragma once

#include <cstddef>
#include <map>
#include <unordered_map>
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
// number. This class makes that linear, and leaves the same values in all objects, by two facts,
// which hold wherever in the tables, and however deep in itself, a group is asked. It spares no
// attempt that starts among elements which a collection at the head of the group takes: such a one
// reads all that are left of them.
//
// A member that takes nothing from a sibling and is asked again behind it leaves no trace. So one
// that refused a sibling when it was first asked there need not be asked there again, but behind.
//
// If the first member of a group refuses a sibling and those behind, up to another, and the group
// does not match from the first of them, then it ends the same way, with the same values read, from
// each of them and from that other one.
//
// One object stands for the element that is being read on this thread, the latest for the
// innermost, and one for the document around it. Where none stands, nothing is known and nothing
// is noted.
class CSiblingScan
{
public:
    // pFirst: the first of the siblings, null if there are none. They stay as they are meanwhile.
    explicit CSiblingScan(CXmlElement* pFirst);
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
                            const CXmlElement* pUntil);

    // The first sibling from pCursor on that the member may not refuse.
    static CXmlElement* SkipRefused(const QnXmlLib16Data::CElementInfo& member,
                                    CXmlElement* pCursor);

    // The innermost group, whose first member this is, did not match from pStart on.
    static void NoteMismatch(const QnXmlLib16Data::CElementInfo& firstMember,
                             const CXmlElement* pStart);

    // Whether that is known to happen.
    static bool IsMismatch(const QnXmlLib16Data::CElementInfo& firstMember, CXmlElement* pStart);

    // To be called before an entry is asked; and if it has refused pAsked, what to ask it next:
    // behind all from which the group that it stands for is known to end the same way.
    static void ForgetLastMismatch();
    static CXmlElement* NextToAsk(CXmlElement* pAsked);

private:
    // What is noted: that the member refuses siblings up to another, or that the group whose first
    // member it is does not match from pFrom on.
    struct Note
    {
        const QnXmlLib16Data::CElementInfo* pMember;
        const CXmlElement* pFrom;
        const CXmlElement* pUntil;
        bool bMismatch;
    };

    // Siblings by their numbers, for each member: from each, steps lead over those that the member
    // is known to refuse, or from which its group is known not to match, to the first other one,
    // which leads to itself. Following them shortens them.
    using Steps = std::vector<std::size_t>;
    using Known = std::map<const QnXmlLib16Data::CElementInfo*, Steps>;

    void Add(const Note& note);
    CXmlElement* Skip(Known& known, const QnXmlLib16Data::CElementInfo& member,
                      CXmlElement* pCursor);
    void Learn();
    Steps& GetSteps(Known& known, const QnXmlLib16Data::CElementInfo* pMember) const;
    static std::size_t Follow(Steps& steps, std::size_t nSibling);
    void NumberSiblings();

    CXmlElement* const m_pFirst;
    // Most of what is noted is never asked for: only then it becomes known.
    std::vector<Note> m_vecNotes;
    // Both empty as long as nothing is known. The end, null, has a number too.
    std::vector<CXmlElement*> m_vecSiblings;
    std::unordered_map<const CXmlElement*, std::size_t> m_numbers;
    Known m_refused;
    Known m_mismatch;
    int m_nDepth = 0;        // of groups inside each other
    int m_nDroppedDepth = 0; // that of objects that are dropped; 0 for none
    // The group that did not match last: its depth, 0 for none, its first member, and where it was
    // asked.
    int m_nMismatchDepth = 0;
    const QnXmlLib16Data::CElementInfo* m_pMismatchMember = nullptr;
    const CXmlElement* m_pMismatchStart = nullptr;
    CSiblingScan* m_pOuter;
};

} // namespace QnXmlLib16
