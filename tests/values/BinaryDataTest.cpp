#include "QnXmlLib16/values/BinaryData.h"

#include "QnXmlLib16/values/Base64.h"
#include "tests/support/Text.h"
#include "tests/values/ValueTools.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <utility>

using namespace QnXmlLib16;

namespace {

// An array of exactly these bytes, as a caller adopts it to a value.
unsigned char* NewBytes(const char* psz)
{
    const std::size_t uLength = std::strlen(psz);
    return std::copy_n(psz, uLength, new unsigned char[uLength]) - uLength;
}

const unsigned char* Bytes(const char* psz)
{
    return reinterpret_cast<const unsigned char*>(psz);
}

std::string Encode(const std::string& strBytes)
{
    return ToData(strBytes).GetAsBase64();
}

std::string Decode(const std::string& strText)
{
    CBinaryData data("before");
    data.SetAsBase64(strText.c_str());
    EXPECT_EQ(data.GetData() == nullptr, strText.empty()); // bad text too leaves a holder
    return ToText(data);
}

} // namespace

TEST(BinaryData, TellsNoHolderFromAnEmptyOne)
{
    EXPECT_EQ(CBinaryData(new unsigned char[3], 0, true).GetData(), nullptr); // freed
    CBinaryData none("x"), empty;
    none.SetBuffer(static_cast<const char*>(nullptr));
    none.Append(static_cast<const char*>(nullptr));
    none.Append(Bytes("x"), 0);
    EXPECT_EQ(none.ReleaseData(), nullptr);
    none.SetAsHexString("");
    empty.SetAsBase64("!");
    EXPECT_EQ(none, CBinaryData(nullptr));
    EXPECT_EQ(none.GetAsHexString(), "");
    EXPECT_TRUE(none != empty && empty != none && empty == CBinaryData(empty));
    EXPECT_EQ(std::as_const(empty)[0], 0);
    EXPECT_TRUE(CBinaryData("ab") != CBinaryData("ac") && CBinaryData("ab") != CBinaryData("abc"));
}

TEST(BinaryData, CopiesShareUntilOneIsWritten)
{
    unsigned char* const pBytes = NewBytes("abc");
    CBinaryData a(pBytes, 3, true);
    EXPECT_NE(CBinaryData(pBytes, 3, false).GetData(), pBytes);
    CBinaryData b(a), c;
    c = a;
    EXPECT_TRUE(a.GetData() == pBytes && b.GetData() == pBytes && c.GetData() == pBytes);
    a[0] = 'X';
    c.Append('d');
    EXPECT_EQ(ToText(a) + ToText(b) + ToText(c), "Xbcabcabcd");
    unsigned char* const pBefore = a.GetData();
    a[1] = 'Y'; // alone on its bytes: no copy
    EXPECT_EQ(a.GetData(), pBefore);

    // The bytes are given away as they are, or copied while others have them.
    c = b;
    const std::unique_ptr<unsigned char[]> pCopy(c.ReleaseData()), pGiven(b.ReleaseData());
    EXPECT_EQ(c.GetData(), nullptr);
    EXPECT_EQ(pGiven.get(), pBytes);
    EXPECT_NE(pCopy.get(), pBytes);
    EXPECT_EQ(std::memcmp(pCopy.get(), "abc", 3), 0);

    // An assignment to itself empties.
    const CBinaryData& same = a;
    a = same;
    EXPECT_EQ(a.GetData(), nullptr);
}

TEST(BinaryData, TheIndexAfterTheLastByteIsAdmitted)
{
    const CBinaryData copied("abc");
    EXPECT_EQ(copied[3], 0);
    // An adopted block is exactly full; reading does not move it, writing finds room.
    CBinaryData adopted(NewBytes("abc"), 3, true), grown;
    const unsigned char* const pBefore = adopted.GetData();
    EXPECT_EQ(std::as_const(adopted)[3], 0);
    EXPECT_EQ(adopted.GetData(), pBefore);
    adopted[3] = 'x';
    EXPECT_EQ(&adopted[3], adopted.GetData() + 3);
    // Any number of appended bytes leaves the spare one inside the block.
    for (int i = 0; i < 8192; ++i)
        grown.Append('x');
    EXPECT_EQ(std::as_const(grown)[8192], 0);
    EXPECT_EQ(FailureOf<CQnException>([&] { copied[4]; }), "Index Out of range [4]");
    EXPECT_EQ(FailureOf<CQnException>([&] { adopted[4]; }), "Index Out of range [4]");
    EXPECT_EQ(FailureOf<CQnException>([] { CBinaryData()[0]; }), "Index Out of range [0]");
}

TEST(BinaryData, AppendingAStringStopsAtItsFirstNul)
{
    CBinaryData data;
    data.Append(static_cast<unsigned char>('a'));
    data.Append(std::string("ef\0gh", 5));
    data.Append(Bytes("i\0j"), 3);
    EXPECT_EQ(ToText(data), std::string("aefi\0j", 6));
}

TEST(BinaryData, TakesItsOwnBytesAsArgument)
{
    CBinaryData data(NewBytes("abc"), 3, true);
    const CBinaryData other(data);
    data.Append(data);
    EXPECT_EQ(ToText(data), "abcabc");
    data.SetBuffer(data.GetData() + 1, 2);
    EXPECT_EQ(ToText(data), "bc");
    data.Append(std::string(9000, 'x'));
    data.Append(data.GetData(), 2);
    EXPECT_EQ(ToText(data), "bc" + std::string(9000, 'x') + "bc");
    data.SetBuffer("QUJD");
    data.SetAsBase64(reinterpret_cast<const char*>(data.GetData()));
    EXPECT_EQ(ToText(data) + ToText(other), "ABCabc");
}

TEST(BinaryData, ReadsAndWritesHexadecimalDigits)
{
    CBinaryData data;
    data.SetAsHexString("00fFaB19");
    EXPECT_EQ(data.GetAsHexString(), "00FFAB19");
    EXPECT_EQ(FailureOf<CQnException>([&] { data.SetAsHexString("123"); }),
              "Invalid length in hex string");
    EXPECT_EQ(data.GetData(), nullptr); // cleared ahead of the failure
    for (const char cBad : {'g', 'G', '/', ':', '@', '`', '\xe9'}) {
        for (const std::string& strText : {std::string{'1', cBad}, std::string{cBad, '1'}})
            EXPECT_EQ(FailureOf<CQnException>([&] { data.SetAsHexString(strText.c_str()); }),
                      std::string("Invalid char in hex string [") + cBad + "]");
    }
}

TEST(Base64, GoesThereAndBack)
{
    // RFC 4648, section 10, and all six-bit groups.
    ExpectEach(Encode, {" -> ", "f -> Zg==", "fo -> Zm8=", "foobar -> Zm9vYmFy"});
    std::string strAll;
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(Decode(Encode(strAll)), strAll);
        strAll += static_cast<char>(i * 31);
    }
    EXPECT_EQ(Encode(std::string("\0\x10\x83\x10\x51\x87\x20\x92\x8b\xff\xbf\xfe", 12)),
              "ABCDEFGHIJKL/7/+");
    EXPECT_EQ(CBase64().Encode(nullptr, 5) + CBase64().Encode(Bytes("abc"), -1), "");
    EXPECT_EQ(CBase64().Decode("Zm9v", nullptr), 0u);
}

TEST(Base64, DecodesLeniently)
{
    // Blanks, padding that is missing or in the middle, bits left over, Z and g and = with the top
    // bit set. A bad character drops everything.
    ExpectEach(Decode, {" Zm\r\n9v\tYg = =  -> foob", "Zg -> f", "Z=g -> f", "Zm9vZ -> foo",
                        "\xda\x67\xbd -> f", "Zm9v! -> ", "Zm9v- -> ", "\xa1 -> ", "==== -> "});
}

TEST(DataHolder, RefusesToGiveOrGrowSharedBytes)
{
    auto* pHolder = new CBinaryData::CDataHolder(NewBytes("abc"), 3, true);
    EXPECT_EQ(pHolder->GetExclusiveCopy(), pHolder);
    pHolder->AddRef();
    EXPECT_EQ(FailureOf<CQnException>([&] { pHolder->Append(Bytes("e"), 1); }),
              "Failed to append. [RefCount=2]");
    EXPECT_EQ(FailureOf<CQnException>([&] { pHolder->Release(true); }),
              "Failed to release data. [RefCount=1]");
    pHolder->Append(Bytes("d"), 1); // the failed release gave one reference back; the lock is free
    pHolder->AddRef();
    auto* pCopy = pHolder->GetExclusiveCopy();
    pHolder->Append(Bytes("e"), 1); // it lost the other reference
    EXPECT_EQ(pHolder->GetLength(), 5u);
    pHolder->Release(false);
    const std::unique_ptr<unsigned char[]> pBytes(pCopy->GetData());
    pCopy->Release(true);
    EXPECT_EQ(std::memcmp(pBytes.get(), "abcd", 4), 0);
}

TEST(DataHolder, ServesHandlesOnSeveralThreads)
{
    const CBinaryData common("common bytes");
    auto* pHolder = new CBinaryData::CDataHolder(NewBytes("x"), 1, true);
    std::vector<std::thread> vecThreads;
    for (int iThread = 0; iThread < 4; ++iThread) {
        // Each thread has a handle of its own from the start.
        vecThreads.emplace_back([own = common, pHolder] {
            for (int i = 0; i < 2000; ++i) {
                CBinaryData copy(own);
                copy[0] = 'X';
                pHolder->Append(copy.GetData(), 1);
            }
        });
    }
    for (std::thread& thread : vecThreads)
        thread.join();
    EXPECT_EQ(pHolder->GetLength(), 8001u);
    EXPECT_EQ(ToText(common), "common bytes");
    pHolder->Release(false);
}
