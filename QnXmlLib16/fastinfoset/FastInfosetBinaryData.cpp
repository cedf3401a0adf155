#include "QnXmlLib16/fastinfoset/FastInfosetBinaryData.h"

#include "QnXmlLib16/fastinfoset/internal/NumberOctets.h"
#include "QnXmlLib16/support/Encoder.h"
#include "QnXmlLib16/support/Exceptions.h"

namespace QnXmlLib16 {

namespace {

constexpr unsigned long kUuidSize = 16;

std::string DecodeUuids(const unsigned char* pOctets, unsigned long ulLength)
{
    if (ulLength % kUuidSize != 0)
        throw CQnException("Invalid value for UUID byte encoding.");
    std::string strText = CBinaryData::GetAsHexString(pOctets, kUuidSize);
    for (unsigned long ul = kUuidSize; ul < ulLength; ul += kUuidSize) {
        strText += ' ';
        strText += CBinaryData::GetAsHexString(pOctets + ul, kUuidSize);
    }
    return strText;
}

} // namespace

CFastInfosetBinaryData::CFastInfosetBinaryData() = default;

CFastInfosetBinaryData::CFastInfosetBinaryData(const CBinaryData& data) : CBinaryData(data) {}

CFastInfosetBinaryData::CFastInfosetBinaryData(unsigned char* pData, unsigned long ulLength,
                                               bool bTakeOwnership)
    : CBinaryData(pData, ulLength, bTakeOwnership)
{}

CFastInfosetBinaryData::CFastInfosetBinaryData(const char* pszText) : CBinaryData(pszText) {}

CFastInfosetBinaryData::CFastInfosetBinaryData(const CFastInfosetBinaryData& other) = default;

CFastInfosetBinaryData&
CFastInfosetBinaryData::operator=(const CFastInfosetBinaryData& other) = default;

CFastInfosetBinaryData::~CFastInfosetBinaryData() = default;

void CFastInfosetBinaryData::SetAsEncodedString(unsigned long iAlgorithm, const char* pszText)
{
    const CBinaryData old(*this); // the text may lie in the bytes
    Clear();
    const char* const pszValue = pszText ? pszText : "";
    switch (iAlgorithm) {
    case kAlgorithmHex:
    case kAlgorithmUuid:
        SetAsHexString(pszValue);
        return;
    case kAlgorithmBase64:
        SetAsBase64(pszValue);
        return;
    case kAlgorithmCData:
        CBinaryData::operator=(CEncoder::LocalCodePageToUtf8Binary(pszValue));
        return;
    }
    std::string strOctets;
    EncodeNumber(iAlgorithm, pszValue, strOctets);
    SetBuffer(reinterpret_cast<const unsigned char*>(strOctets.data()), strOctets.size());
}

std::string CFastInfosetBinaryData::GetAsString(unsigned long iAlgorithm) const
{
    if (GetLength() == 0)
        return std::string();
    switch (iAlgorithm) {
    case kAlgorithmHex:
        return GetAsHexString();
    case kAlgorithmBase64:
        return GetAsBase64();
    case kAlgorithmUuid:
        return DecodeUuids(GetData(), GetLength());
    }
    return DecodeNumbers(iAlgorithm, GetData(), GetLength());
}

} // namespace QnXmlLib16
