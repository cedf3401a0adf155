#include "QnXmlLib16/support/SmartPtr.h"

#include <gtest/gtest.h>
#include <utility>

using namespace QnXmlLib16;

namespace {

class Counted
{
public:
    ~Counted() { ++s_iDestroyed; }
    void AddRef() { ++m_iReferences; }
    // Not inlined: g++ would hold the count's next use against the deletion.
    __attribute__((noinline)) void Release()
    {
        if (--m_iReferences == 0)
            delete this;
    }

    int m_iReferences = 0;
    static int s_iDestroyed;
};

int Counted::s_iDestroyed = 0;

class Derived : public Counted
{};

} // namespace

TEST(SmartPtr, HoldsOneReferenceForEachHolderAndComparesByPointer)
{
    auto* pObject = new Derived;
    CSmartPtr<Derived> first(pObject);
    CSmartPtr<Counted> base(first);
    CSmartPtr<Counted> copy(base);
    EXPECT_EQ(pObject->m_iReferences, 3);
    CSmartPtr<Counted> moved(std::move(copy));
    EXPECT_FALSE(copy);
    moved = *&moved; // to itself
    base = first;
    EXPECT_EQ(pObject->m_iReferences, 3);
    const Counted* pConst = pObject;
    EXPECT_TRUE(base == first && base == pConst && pObject == base && base != nullptr);
    EXPECT_TRUE(copy == nullptr && nullptr == copy && copy != first && pConst != copy);
    EXPECT_FALSE(base != first || base != pConst || pConst != base || base == nullptr);
    base.Reset();
    moved = nullptr;
    EXPECT_EQ(pObject->m_iReferences, 1);
    EXPECT_EQ(Counted::s_iDestroyed, 0);
    first = new Derived; // lets the old object go
    EXPECT_EQ(Counted::s_iDestroyed, 1);
    EXPECT_EQ(first->m_iReferences, 1);
    EXPECT_EQ(&*first, first.GetPtr());
}
