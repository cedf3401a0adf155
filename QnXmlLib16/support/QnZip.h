#pragma once

#include "QnXmlLib16/support/InstanceMonitor.h"
#include "QnXmlLib16/support/SettingTypes.h"

namespace QnXmlLib16 {

class CBinaryData;

// gzip (RFC 1952) and zlib (RFC 1950) over whole buffers. Buffers are allocated with array new by
// either side and freed with array delete; an operation that replaces one frees the old one.
// No shared state.
class QNXML_API CQnZip : public CInstanceMonitor
{
public:
    CQnZip();
    ~CQnZip() override;

    // Compresses in place, level 1. A type other than gzip or zlib leaves the data as it is.
    // The result never takes more room than the input: input that does not shrink fails with
    // CQnException "Failed to compress data. [Error Code: %d]", and is untouched then.
    static void Compress(unsigned char** ppData, unsigned long* pulLength, CompressionType eType);

    // Decompresses gzip or zlib data in place, found by its header. Deliberate: anything else,
    // damaged data included, is left as it is without a failure, so that plain input passes
    // through; what reads the bytes next tells. Pinned by
    // Decompression.OfDamagedDataLeavesItAsItIs. Bytes after the end of the compressed data
    // are dropped.
    static void Decompress(unsigned char** ppData, unsigned long* pulLength);

    // As Compress. Empty data stays empty; after a failure data holds its bytes as before.
    static void CompressData(CBinaryData& data, CompressionType eType);
};

} // namespace QnXmlLib16
