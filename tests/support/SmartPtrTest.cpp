#include "QnXmlLib16/support/SmartPtr.h"

#include "QnXmlLib16/collections/Element.h"

#include <gtest/gtest.h>
#include <utility>

using namespace QnXmlLib16;

TEST(SmartPtr, HoldsOneReferenceForEachHolderAndComparesByPointer)
{
    const auto references = [](CXmlObjectBase* pObject) {
        pObject->AddRef();
        return pObject->Release();
    };
    auto* pObject = new CElement("e");
    CSmartPtr<CElement> first(pObject);
    CSmartPtr<CXmlObjectBase> base(first);
    CSmartPtr<CXmlObjectBase> copy(base);
    EXPECT_EQ(references(pObject), 3);
    CSmartPtr<CXmlObjectBase> moved(std::move(copy));
    EXPECT_FALSE(copy);
    moved = *&moved; // to itself
    base = first;
    EXPECT_EQ(references(pObject), 3);
    const CXmlObjectBase* pConst = pObject;
    EXPECT_TRUE(base == first && base == pConst && pObject == base && base != nullptr);
    EXPECT_TRUE(copy == nullptr && nullptr == copy && copy != first && pConst != copy);
    base.Reset();
    moved = nullptr;
    EXPECT_EQ(references(pObject), 1);
    pObject->AddRef();
    first = new CElement("e"); // lets the old object go
    EXPECT_EQ(pObject->Release(), 0);
    EXPECT_EQ(references(&*first), 1);
}
