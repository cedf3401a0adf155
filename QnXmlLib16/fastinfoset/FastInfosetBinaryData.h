#pragma once

#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/values/BinaryData.h"

#include <string>

namespace QnXmlLib16 {

// Bytes in the form of one of the built-in encoding algorithms of Fast Infoset (ITU-T X.891):
//
//   1 hexadecimal, 2 base64         the bytes as they are
//   3 short, 4 int, 5 long          two's complement in 2, 4 and 8 bytes, high byte first
//   6 boolean                       a count of unused bits in 4 bits, then a bit for each item
//   7 float, 8 double               IEEE 754 in 4 and 8 bytes, high byte first
//   9 uuid                          16 bytes
//   10 cdata                        UTF-8
//
// Every failure of its own is CQnException. Text is in the local code page.
class QNXML_API CFastInfosetBinaryData : public CBinaryData
{
public:
    // As those of CBinaryData.
    CFastInfosetBinaryData();
    CFastInfosetBinaryData(const CBinaryData& data);
    CFastInfosetBinaryData(unsigned char* pData, unsigned long ulLength, bool bTakeOwnership);
    CFastInfosetBinaryData(const char* pszText);
    CFastInfosetBinaryData(const CFastInfosetBinaryData& other);
    CFastInfosetBinaryData& operator=(const CFastInfosetBinaryData& other);
    ~CFastInfosetBinaryData() override;

    // Replaces the bytes by one value in its lexical form (XML Schema Part 2). 9 takes hexadecimal
    // digits without hyphens. "Unknown byte encoding." for any other number; a value that the
    // algorithm can't hold fails in the words of CConversions and CBinaryData. The object is empty
    // after a failure.
    void SetAsEncodedString(unsigned long iAlgorithm, const char* pszText);

    // The lexical form of all bytes, items separated by a blank, except that booleans of one byte
    // stand side by side. 1 and 9 give upper-case hexadecimal digits. 10 and numbers not listed are
    // an "Unknown byte encoding."; a length that holds no whole number of items is an "Invalid
    // value for SHORT byte encoding." with the name of the algorithm in capitals. Empty bytes give
    // an empty text, whichever the number.
    std::string GetAsString(unsigned long iAlgorithm) const;
};

} // namespace QnXmlLib16
