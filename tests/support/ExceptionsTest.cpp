#include "QnXmlLib16/support/Exceptions.h"

#include "tests/support/SmallStack.h"

#include <gtest/gtest.h>
#include <memory>
#include <type_traits>
#include <typeinfo>
#include <utility>

using namespace QnXmlLib16;

TEST(ExceptionPath, IsAppendedToTheMessageOnceAndOnlyIfThereIsOne)
{
    const CQnException withPath("m", std::string("/a/b"));
    EXPECT_EQ(withPath.GetMessage(), "m\nPath: /a/b");
    EXPECT_EQ(withPath.GetPath(), "/a/b");
    EXPECT_EQ(CQnValidationException(withPath).GetMessage(), "m\nPath: /a/b");
    const CQnInvalidValueException outer("v", withPath);
    EXPECT_EQ(outer.GetMessage() + outer.GetPath(), "v");
    EXPECT_EQ(CQnException("a", outer).GetFullMessage(), "a\nv\nm\nPath: /a/b");
}

TEST(ExceptionFamily, IsNoStandardExceptionAndClonesToTheSameClassWithAPrivateChain)
{
    EXPECT_FALSE((std::is_base_of_v<std::exception, CQnException>));
    const CQnInvalidParamException inner("inner");
    const std::unique_ptr<CQnException> originals[] = {
        std::make_unique<CQnException>("m", inner),
        std::make_unique<CQnValidationException>("m", std::string(), inner),
        std::make_unique<CQnInvalidValueException>("m", inner),
        std::make_unique<CQnInvalidNamespaceException>("m", std::string(), inner),
        std::make_unique<CQnInvalidStateException>("m", inner),
        std::make_unique<CQnInvalidParamException>("m", inner),
        std::make_unique<CQnOverFlowException>("m", inner),
    };
    for (const auto& pOriginal : originals) {
        const CQnException& original = *pOriginal;
        const std::unique_ptr<CQnException> pClone(original.Clone());
        const CQnException& clone = *pClone;
        EXPECT_EQ(typeid(clone), typeid(original));
        EXPECT_EQ(clone.GetFullMessage(), "m\ninner");
        EXPECT_NE(clone.GetInnerException(), original.GetInnerException());
        const CQnException& innerClone = *clone.GetInnerException();
        EXPECT_EQ(typeid(innerClone), typeid(CQnInvalidParamException));
    }
}

TEST(ExceptionAssignment, KeepsThePathAndLetsTheOldInnerExceptionGo)
{
    const CQnException source("source", "/s", CQnOverFlowException("new"));
    CQnException target("target", "/t", CQnInvalidParamException("old"));
    const std::unique_ptr<CQnException> pOld(target.GetInnerException());
    target = source;
    EXPECT_EQ(target.GetMessage(), "source\nPath: /s");
    EXPECT_EQ(target.GetPath(), "/t");
    EXPECT_EQ(target.GetInnerException()->GetMessage(), "new");
    EXPECT_NE(target.GetInnerException(), source.GetInnerException());
    EXPECT_EQ(pOld->GetMessage(), "old"); // alive, and the caller's to free
}

TEST(ExceptionChain, IsCopiedPrintedAndDestroyedInConstantStack)
{
    const auto action = [] {
        constexpr std::size_t nDepth = 2000;
        auto pOuter = std::make_unique<CQnOverFlowException>("m");
        for (std::size_t n = 1; n < nDepth; ++n)
            pOuter = std::make_unique<CQnOverFlowException>("m", *pOuter);
        const std::unique_ptr<CQnException> pClone(pOuter->Clone());
        EXPECT_EQ(pClone->GetFullMessage().size(), 2 * nDepth - 1);
        const CQnException* pLast = pClone.get();
        while (pLast->GetInnerException())
            pLast = pLast->GetInnerException();
        EXPECT_EQ(typeid(*pLast), typeid(CQnOverFlowException));
    };
    RunOnSmallStack(action, 128 * 1024);
}
