#include "QnXmlLib16/values/BinaryData.h"

#include "tests/model/Failure.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

using namespace QnXmlLib16;
using Model::ExpectFailure;

namespace {

std::string ToText(const CBinaryData& data)
{
    return std::string(reinterpret_cast<const char*>(data.GetData()), data.GetLength());
}

// An array of exactly these bytes, as a caller adopts it to a value.
unsigned char* NewBytes(const char* psz)
{
    const std::size_t uLength = std::strlen(psz);
    unsigned char* pResult = new unsigned char[uLength];
    std::copy_n(psz, uLength, pResult);
    return pResult;
}

const unsigned char* Bytes(const char* psz)
{
    return reinterpret_cast<const unsigned char*>(psz);
}

} // namespace

TEST(BinaryData, IsEmptyWithoutBytes)
{
    EXPECT_EQ(CBinaryData().GetData(), nullptr);
    EXPECT_EQ(CBinaryData("").GetData(), nullptr);
    EXPECT_EQ(CBinaryData(nullptr).GetData(), nullptr);
    EXPECT_EQ(CBinaryData(nullptr, 5, false).GetLength(), 0u);
    EXPECT_EQ(CBinaryData(new unsigned char[3], 0, true).GetData(), nullptr); // freed
    CBinaryData data("x");
    data.SetBuffer(static_cast<const char*>(nullptr));
    EXPECT_EQ(data.GetData(), nullptr);
    data.Append(static_cast<const char*>(nullptr));
    data.Append(Bytes("x"), 0);
    EXPECT_EQ(data.GetData(), nullptr);
    EXPECT_EQ(data.ReleaseData(), nullptr);
}

TEST(BinaryData, AdoptsOrCopies)
{
    unsigned char* pBytes = NewBytes("abc");
    const CBinaryData adopted(pBytes, 3, true);
    EXPECT_EQ(adopted.GetData(), pBytes);
    const CBinaryData copied(pBytes, 3, false);
    EXPECT_NE(copied.GetData(), pBytes);
    EXPECT_EQ(ToText(copied), "abc");
}

TEST(BinaryData, CopiesShareUntilOneIsWritten)
{
    CBinaryData a("abc");
    const CBinaryData b(a);
    CBinaryData c;
    c = a;
    EXPECT_EQ(a.GetData(), b.GetData());
    EXPECT_EQ(c.GetData(), b.GetData());
    a[0] = 'X';
    c.Append('d');
    EXPECT_EQ(ToText(a), "Xbc");
    EXPECT_EQ(ToText(b), "abc");
    EXPECT_EQ(ToText(c), "abcd");
    unsigned char* pBefore = a.GetData();
    a[1] = 'Y'; // alone on its bytes: no copy
    EXPECT_EQ(a.GetData(), pBefore);
}

TEST(BinaryData, SelfAssignmentEmpties)
{
    CBinaryData a("abc");
    const CBinaryData& same = a;
    a = same;
    EXPECT_EQ(a.GetData(), nullptr);
}

TEST(BinaryData, ComparesBytesAndTellsNoHolderFromAnEmptyOne)
{
    CBinaryData none, empty;
    none.SetAsHexString("");
    empty.SetAsBase64("!");
    EXPECT_EQ(none.GetData(), nullptr);
    EXPECT_NE(empty.GetData(), nullptr);
    EXPECT_EQ(empty.GetLength(), 0u);
    EXPECT_TRUE(none != empty);
    EXPECT_TRUE(empty != none);
    EXPECT_TRUE(empty == CBinaryData(empty));
    EXPECT_TRUE(none == CBinaryData());
    EXPECT_TRUE(CBinaryData("ab") == CBinaryData("ab"));
    EXPECT_TRUE(CBinaryData("ab") != CBinaryData("ac"));
    EXPECT_TRUE(CBinaryData("ab") != CBinaryData("abc"));
}

TEST(BinaryData, TheIndexAfterTheLastByteIsAdmitted)
{
    const CBinaryData copied("abc");
    EXPECT_EQ(copied[2], 'c');
    EXPECT_EQ(copied[3], 0);
    EXPECT_EQ(&copied[3], copied.GetData() + 3);
    // An adopted block is exactly full; reading does not move it, writing finds room.
    CBinaryData adopted(NewBytes("abc"), 3, true);
    const unsigned char* pBefore = adopted.GetData();
    EXPECT_EQ(std::as_const(adopted)[3], 0);
    EXPECT_EQ(adopted.GetData(), pBefore);
    adopted[3] = 'x';
    EXPECT_EQ(&adopted[3], adopted.GetData() + 3);
    EXPECT_EQ(adopted.GetLength(), 3u);
    EXPECT_EQ(ToText(adopted), "abc");
    adopted.Append('d');
    EXPECT_EQ(ToText(adopted), "abcd");
    // Any number of appended bytes leaves the spare one inside the block.
    CBinaryData grown;
    for (int i = 0; i < 8192; ++i)
        grown.Append('x');
    EXPECT_EQ(std::as_const(grown)[8192], 0);

    ExpectFailure<CQnException>([&] { copied[4]; }, "Index Out of range [4]");
    ExpectFailure<CQnException>([&] { adopted[5]; }, "Index Out of range [5]");
    ExpectFailure<CQnException>([] { CBinaryData()[0]; }, "Index Out of range [0]");
    CBinaryData empty;
    empty.SetAsBase64("!");
    EXPECT_EQ(std::as_const(empty)[0], 0);
    ExpectFailure<CQnException>([&] { empty[1]; }, "Index Out of range [1]");
}

TEST(BinaryData, Appends)
{
    CBinaryData data;
    data.Append(static_cast<unsigned char>('a'));
    data.Append('b');
    data.Append("cd");
    data.Append(std::string("ef"));
    data.Append(CBinaryData("gh"));
    data.Append(Bytes("i\0j"), 3);
    EXPECT_EQ(ToText(data), std::string("abcdefghi\0j", 11));
    data.SetBuffer("");
    std::string strExpected;
    for (int i = 0; i < 3000; ++i) {
        const std::string strPiece(static_cast<std::size_t>(i % 50),
                                   static_cast<char>('a' + i % 26));
        data.Append(strPiece);
        data.Append('.');
        strExpected += strPiece + '.';
    }
    EXPECT_EQ(ToText(data), strExpected);
}

TEST(BinaryData, AppendingAStringStopsAtItsFirstNul)
{
    CBinaryData data;
    data.Append(std::string("ab\0cd", 5));
    EXPECT_EQ(ToText(data), "ab");
}

TEST(BinaryData, TakesItsOwnBytesAsArgument)
{
    for (const bool bShared : {false, true}) {
        SCOPED_TRACE(bShared);
        CBinaryData data(NewBytes("abc"), 3, true);
        CBinaryData other;
        if (bShared)
            other = data;
        data.Append(data);
        EXPECT_EQ(ToText(data), "abcabc");
        data.SetBuffer(data.GetData() + 1, 2);
        EXPECT_EQ(ToText(data), "bc");
        data.Append(std::string(9000, 'x'));
        data.Append(data.GetData(), 2);
        EXPECT_EQ(ToText(data), "bc" + std::string(9000, 'x') + "bc");
        data.SetBuffer("414243");
        data.SetAsHexString(reinterpret_cast<const char*>(data.GetData()));
        EXPECT_EQ(ToText(data), "ABC");
        data.SetBuffer("QUJD");
        data.SetAsBase64(reinterpret_cast<const char*>(data.GetData()));
        EXPECT_EQ(ToText(data), "ABC");
        EXPECT_EQ(ToText(other), bShared ? "abc" : "");
    }
}

TEST(BinaryData, GivesItsBytesAway)
{
    CBinaryData alone(NewBytes("abc"), 3, true);
    const unsigned char* pBefore = alone.GetData();
    const std::unique_ptr<unsigned char[]> pBytes(alone.ReleaseData());
    EXPECT_EQ(pBytes.get(), pBefore);
    EXPECT_EQ(alone.GetData(), nullptr);

    CBinaryData shared("abc");
    const CBinaryData other(shared);
    const std::unique_ptr<unsigned char[]> pCopy(shared.ReleaseData());
    EXPECT_NE(pCopy.get(), other.GetData());
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(pCopy.get()), 3), "abc");
    EXPECT_EQ(ToText(other), "abc");
}

TEST(BinaryData, ReadsAndWritesHexadecimalDigits)
{
    CBinaryData data;
    data.SetAsHexString("00fFaB19");
    EXPECT_EQ(data.GetAsHexString(), "00FFAB19");
    EXPECT_EQ(CBinaryData().GetAsHexString(), "");
    EXPECT_EQ(CBinaryData::GetAsHexString(nullptr, 5), "");
    unsigned char* pBytes = nullptr;
    EXPECT_EQ(CBinaryData::ConvertToHexData("4A", &pBytes), 1u);
    const std::unique_ptr<unsigned char[]> pOwner(pBytes);
    EXPECT_EQ(pBytes[0], 0x4A);

    ExpectFailure<CQnException>([&] { data.SetAsHexString("123"); },
                                "Invalid length in hex string");
    EXPECT_EQ(data.GetData(), nullptr); // cleared ahead of the failure
    for (const char cBad : {'g', 'G', '/', ':', '@', '`', ' ', '\xe9'}) {
        for (const std::string& strText : {std::string{'1', cBad}, std::string{cBad, '1'}}) {
            data.SetBuffer("before");
            ExpectFailure<CQnException>([&] { data.SetAsHexString(strText.c_str()); },
                                        std::string("Invalid char in hex string [") + cBad + "]");
            EXPECT_EQ(data.GetData(), nullptr);
        }
    }
}

TEST(DataHolder, RefusesToGiveOrGrowSharedBytes)
{
    auto* pHolder = new CBinaryData::CDataHolder(NewBytes("abc"), 3, true);
    EXPECT_EQ(pHolder->GetExclusiveCopy(), pHolder);
    pHolder->Append(Bytes("d"), 1);
    EXPECT_EQ(pHolder->GetLength(), 4u);
    pHolder->AddRef();
    ExpectFailure<CQnException>([&] { pHolder->Append(Bytes("e"), 1); },
                                "Failed to append. [RefCount=2]");
    ExpectFailure<CQnException>([&] { pHolder->Release(true); },
                                "Failed to release data. [RefCount=1]");
    pHolder->Append(Bytes("e"), 1); // the failed release gave one reference back; the lock is free
    pHolder->AddRef();
    auto* pCopy = pHolder->GetExclusiveCopy();
    EXPECT_NE(pCopy, pHolder);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(pCopy->GetData()), pCopy->GetLength()),
              "abcde");
    pHolder->Append(Bytes("f"), 1); // it lost the other reference
    pHolder->Release(false);
    const std::unique_ptr<unsigned char[]> pBytes(pCopy->GetData());
    pCopy->Release(true);
    EXPECT_EQ(pBytes[4], 'e');
}

TEST(DataHolder, ServesHandlesOnSeveralThreads)
{
    const CBinaryData common("common bytes");
    auto* pHolder = new CBinaryData::CDataHolder(NewBytes("x"), 1, true);
    std::atomic<int> iWrong{0};
    std::vector<std::thread> vecThreads;
    for (int iThread = 0; iThread < 4; ++iThread) {
        // Each thread has a handle of its own from the start.
        vecThreads.emplace_back([own = common, pHolder, iThread, &iWrong] {
            for (int i = 0; i < 2000; ++i) {
                CBinaryData copy(own);
                copy.Append(static_cast<char>('0' + iThread));
                CBinaryData second(own);
                second[0] = 'X';
                if (copy.GetLength() != 13 || own.GetData()[0] != 'c')
                    ++iWrong;
                pHolder->Append(copy.GetData(), 1);
            }
        });
    }
    for (std::thread& thread : vecThreads)
        thread.join();
    EXPECT_EQ(iWrong, 0);
    EXPECT_EQ(pHolder->GetLength(), 8001u);
    EXPECT_EQ(ToText(common), "common bytes");
    pHolder->Release(false);
}
