#include "QnXmlLib16/support/QnZip.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/support/internal/CompressedData.h"
#include "QnXmlLib16/values/BinaryData.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <memory>
#include <zlib.h>

namespace QnXmlLib16 {

namespace {

// zlib accepts every version text that begins with its own first digit, and wants the size of the
// stream that the caller was compiled with.
constexpr char kVersion[] = "1.2.3";
constexpr int kStreamSize = 112;
static_assert(sizeof(z_stream) == kStreamSize, "the size of zlib's stream on this target");

constexpr int kLevel = 1; // speed first
constexpr int kMemoryLevel = 8;
constexpr int kGZipOnly = 15 + 16;   // window bits: largest window, gzip header
constexpr int kGZipOrZLib = 15 + 32; // window bits: largest window, header recognised
constexpr std::size_t kWorkSize = 65536;

using Bytes = std::unique_ptr<unsigned char[]>;

// Ends a zlib stream; harmless on one whose initialisation failed.
struct StreamEnd
{
    z_stream& stream;
    int (*const pfnEnd)(z_streamp);

    ~StreamEnd() { pfnEnd(&stream); }
};

// zlib counts a piece in 32 bits; its totals have 64, and what is longer than a piece goes on from
// there.
uInt PieceOf(std::size_t uLeft)
{
    return static_cast<uInt>(std::min<std::size_t>(uLeft, UINT_MAX));
}

void OfferInput(z_stream& stream, const unsigned char* pInput, std::size_t uLength)
{
    stream.next_in = const_cast<Bytef*>(pInput + stream.total_in); // zlib only reads it
    stream.avail_in = PieceOf(uLength - stream.total_in);
}

void OfferOutput(z_stream& stream, unsigned char* pOutput, std::size_t uLength)
{
    stream.next_out = pOutput + stream.total_out;
    stream.avail_out = PieceOf(uLength - stream.total_out);
}

// All input without a flush, then the end. Neither loop runs twice below 4 GiB. The result is that
// of the last call; Z_STREAM_END is success, and a full output buffer is not.
int DeflateInto(z_stream& stream, const unsigned char* pInput, unsigned char* pOutput,
                std::size_t uLength)
{
    int iResult;
    do {
        OfferInput(stream, pInput, uLength);
        OfferOutput(stream, pOutput, uLength);
        iResult = deflate(&stream, Z_NO_FLUSH);
    } while (iResult == Z_OK && stream.total_in < uLength && stream.total_out < uLength);
    do {
        OfferInput(stream, pInput, uLength);
        OfferOutput(stream, pOutput, uLength);
        iResult = deflate(&stream, Z_FINISH);
    } while (iResult == Z_OK && stream.total_out < uLength);
    return iResult;
}

// The compressed form in a block of its own; no block for a type that means no compression.
Bytes MakeCompressed(const unsigned char* pInput, std::size_t uLength, CompressionType eType,
                     unsigned long* pulResultLength)
{
    if (eType != CompressionType_GZip && eType != CompressionType_ZLib)
        return Bytes();
    Bytes pOutput(new unsigned char[uLength]);
    z_stream stream{};
    int iResult = eType == CompressionType_GZip
                      ? deflateInit2_(&stream, kLevel, Z_DEFLATED, kGZipOnly, kMemoryLevel,
                                      Z_DEFAULT_STRATEGY, kVersion, kStreamSize)
                      : deflateInit_(&stream, kLevel, kVersion, kStreamSize);
    const StreamEnd end{stream, deflateEnd};
    if (iResult == Z_OK)
        iResult = DeflateInto(stream, pInput, pOutput.get(), uLength);
    if (iResult != Z_STREAM_END)
        throw CQnException(FormatString("Failed to compress data. [Error Code: %d]", iResult));
    *pulResultLength = stream.total_out;
    return pOutput;
}

} // namespace

CQnZip::CQnZip() : CInstanceMonitor("CQnZip") {}

CQnZip::~CQnZip() = default;

void CQnZip::Compress(unsigned char** ppData, unsigned long* pulLength, CompressionType eType)
{
    if (Bytes pOutput = MakeCompressed(*ppData, *pulLength, eType, pulLength)) {
        delete[] * ppData;
        *ppData = pOutput.release();
    }
}

void CQnZip::Decompress(unsigned char** ppData, unsigned long* pulLength)
{
    const std::size_t uLength = *pulLength;
    if (!MayBeCompressed(*ppData, uLength))
        return;
    const Bytes pWork(new unsigned char[kWorkSize]);
    z_stream stream{};
    if (inflateInit2_(&stream, kGZipOrZLib, kVersion, kStreamSize) != Z_OK)
        return;
    const StreamEnd end{stream, inflateEnd};

    CBinaryData result;
    int iResult;
    do {
        OfferInput(stream, *ppData, uLength);
        stream.next_out = pWork.get();
        stream.avail_out = kWorkSize;
        iResult = inflate(&stream, Z_NO_FLUSH); // Z_BUF_ERROR once the input is used up
        if (iResult < 0 || iResult > Z_STREAM_END)
            return;
        result.Append(pWork.get(), kWorkSize - stream.avail_out);
    } while (iResult != Z_STREAM_END);

    // Compressed data of no bytes still gives a block.
    Bytes pOutput(result.GetLength() != 0 ? result.ReleaseData() : new unsigned char[1]());
    delete[] * ppData;
    *ppData = pOutput.release();
    *pulLength = stream.total_out;
}

void CQnZip::CompressData(CBinaryData& data, CompressionType eType)
{
    if (data.GetLength() == 0)
        return;
    unsigned long ulLength = 0;
    if (Bytes pOutput = MakeCompressed(data.GetData(), data.GetLength(), eType, &ulLength))
        data = CBinaryData(pOutput.release(), ulLength, true);
}

} // namespace QnXmlLib16
