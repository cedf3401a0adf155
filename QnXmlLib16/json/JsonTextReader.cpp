#include "QnXmlLib16/json/JsonTextReader.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/validation/WhitespaceUtils.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace QnXmlLib16 {

namespace {

constexpr int kMaxDepth = 100;

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// What ends a run of characters that a string takes as they are.
bool EndsRun(char c)
{
    return c == '"' || c == '\\' || c == '\n' || c == '\0';
}

} // namespace

CJsonTextReader::CJsonTextReader(const std::string& strText)
    : CJsonTextReader(strText.data(), strText.size())
{
    m_pText = &strText;
}

CJsonTextReader::CJsonTextReader(const char* pText, std::size_t nLength)
    : CInstanceMonitor("CJsonTextReader"),
      m_pHandler(new CJsonReaderDefaultHandler),
      m_iMaxDepth(kMaxDepth),
      m_bAllowComments(true),
      m_pText(nullptr),
      m_text(pText, nLength),
      m_iPos(0),
      m_chCurrent('\0'),
      m_bEof(false),
      m_iLine(1),
      m_iColumn(0)
{}

CJsonTextReader::~CJsonTextReader() = default;

void CJsonTextReader::SetJsonReaderHandler(IJsonReaderHandler* pHandler)
{
    m_pHandler->SetInnerHandler(pHandler);
}

IErrorPathProvider& CJsonTextReader::GetErrorPathProvider()
{
    return *m_pHandler;
}

void CJsonTextReader::Read()
{
    if (m_pText)
        m_text = *m_pText;
    if (m_text.size() > static_cast<std::size_t>(INT_MAX))
        throw CQnException("The JSON text is too long.");
    m_iPos = 0;
    m_bEof = false;
    m_iLine = 1;
    m_iColumn = 0;
    m_pHandler->ReadStartDocument();
    if (!m_strRootElementName.empty()) {
        m_pHandler->ReadStartObject();
        m_pHandler->ReadName(m_strRootElementName);
    }
    // Deliberate: a text without a value is no failure, and nothing looks behind the first value.
    // Pinned by JsonReading.ReportsWhatItReadsInTheOrderOfTheText.
    if (ReadNextChar(true))
        ReadValue(0);
    if (!m_strRootElementName.empty())
        m_pHandler->ReadEndObject();
    m_pHandler->ReadEndDocument();
}

// The next character, or the next significant one, becomes the current one; false at the end of
// the text.
inline bool CJsonTextReader::ReadNextChar(bool bSkipSpace)
{
    const char* const pText = m_text.data();
    const int iLength = static_cast<int>(m_text.size());
    while (m_iPos < iLength) {
        const char c = pText[m_iPos++];
        ++m_iColumn;
        if (c == '\n') {
            // Deliberate: a line feed is passed over in either case, so it drops out of strings
            // and doesn't end a number. Pinned by JsonReading.LineFeedsAreNoCharacters.
            ++m_iLine;
            m_iColumn = 0;
            continue;
        }
        if (bSkipSpace && CWhitespaceUtils::IsWhiteSpace(c))
            continue;
        m_chCurrent = c;
        if (bSkipSpace && c == '/' && m_bAllowComments && SkipComments())
            continue;
        return true;
    }
    m_bEof = true;
    return false;
}

bool CJsonTextReader::ReadNextChars(char* pBuffer, int iCount)
{
    const int iTaken = std::min(iCount, static_cast<int>(m_text.size()) - m_iPos);
    std::memcpy(pBuffer, m_text.data() + m_iPos, static_cast<std::size_t>(iTaken));
    m_iPos += iTaken;
    m_iColumn += iTaken;
    if (iTaken < iCount) {
        m_bEof = true;
        return false;
    }
    m_chCurrent = pBuffer[iCount - 1];
    return true;
}

// Behind a "/": passes a comment, an unterminated one to the end of the text, and says so. What
// is no comment stays, so that the "/" is reported at its own position.
bool CJsonTextReader::SkipComments()
{
    const char* const pText = m_text.data();
    const int iLength = static_cast<int>(m_text.size());
    if (m_iPos == iLength || (pText[m_iPos] != '/' && pText[m_iPos] != '*'))
        return false;
    const bool bBlock = pText[m_iPos++] == '*';
    ++m_iColumn;
    char chLast = '\0'; // so that the star of the opening doesn't close
    while (m_iPos < iLength) {
        const char c = pText[m_iPos++];
        ++m_iColumn;
        if (c == '\n') {
            ++m_iLine;
            m_iColumn = 0;
            if (!bBlock)
                break;
        }
        if (bBlock && chLast == '*' && c == '/')
            break;
        chLast = c;
    }
    return true;
}

void CJsonTextReader::ReadValue(int iDepth)
{
    if (iDepth + 1 > m_iMaxDepth)
        Fail("JSON exceeded depth limit at line %d, position %d.");
    switch (m_chCurrent) {
    case '{':
        m_pHandler->ReadStartObject();
        ReadObject(iDepth + 1);
        m_pHandler->ReadEndObject();
        break;
    case '[':
        m_pHandler->ReadStartArray();
        ReadArray(iDepth + 1);
        m_pHandler->ReadEndArray();
        break;
    case '"':
        ReadString();
        m_pHandler->ReadString(m_strToken);
        break;
    case 'n':
        ReadNull();
        m_pHandler->ReadNull();
        break;
    case 't':
        ReadTrue();
        m_pHandler->ReadBool(true);
        break;
    case 'f':
        ReadFalse();
        m_pHandler->ReadBool(false);
        break;
    default:
        if (m_chCurrent != '-' && !IsDigit(m_chCurrent))
            FailFound("Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', "
                      "found '%c' at line %d, position %d.");
        ReadNumber();
        m_pHandler->ReadNumber(m_strToken);
        break;
    }
}

void CJsonTextReader::ReadObject(int iDepth)
{
    const char* const pszNoEnd = "Unexpected End of File. Expected Object terminator character '}' "
                                 "at line %d, position %d.";
    if (!ReadNextChar(true)) {
        // Deliberate spelling: callers match on message texts.
        Fail("Unexpected End of File. Expected Object terminator character '}}' "
             "at line %d, position %d.");
    }
    if (m_chCurrent != '}') {
        for (;;) {
            if (m_chCurrent != '"')
                FailFound("Expected quotation mark character '\"' before Name, found '%c' "
                          "at line %d, position %d.");
            ReadString();
            m_pHandler->ReadName(m_strToken);
            if (m_bEof)
                Fail("Unexpected End of File. Expected Object Name/Value separator character ':' "
                     "at line %d, position %d.");
            if (m_chCurrent != ':')
                FailFound("Expected Object Name/Value separator character ':', found '%c' "
                          "at line %d, position %d.");
            if (!ReadNextChar(true))
                Fail("Unexpected End of File. Expected Object Value at line %d, position %d.");
            ReadValue(iDepth);
            if (m_bEof)
                Fail(pszNoEnd);
            if (m_chCurrent == '}')
                break;
            if (m_chCurrent != ',')
                FailFound("Expected Object separator character ',', found '%c' "
                          "at line %d, position %d.");
            if (!ReadNextChar(true))
                Fail(pszNoEnd);
        }
    }
    ReadNextChar(true);
}

void CJsonTextReader::ReadArray(int iDepth)
{
    const char* const pszNoEnd = "Unexpected End of File. Expected Array terminator character ']' "
                                 "at line %d, position %d.";
    if (!ReadNextChar(true))
        Fail(pszNoEnd);
    if (m_chCurrent != ']') {
        for (;;) {
            ReadValue(iDepth);
            if (m_bEof)
                Fail(pszNoEnd);
            if (m_chCurrent == ']')
                break;
            if (m_chCurrent != ',')
                FailFound("Expected Array separator character ',', found '%c' "
                          "at line %d, position %d.");
            if (!ReadNextChar(true))
                Fail(pszNoEnd);
        }
    }
    ReadNextChar(true);
}

// From the opening quote on; m_strToken is the value.
void CJsonTextReader::ReadString()
{
    const char* const pText = m_text.data();
    const int iLength = static_cast<int>(m_text.size());
    bool bZeroByte = false;
    m_strToken.clear();
    for (;;) {
        const int iRun = m_iPos;
        while (m_iPos < iLength && !EndsRun(pText[m_iPos]))
            ++m_iPos;
        m_strToken.append(pText + iRun, static_cast<std::size_t>(m_iPos - iRun));
        m_iColumn += m_iPos - iRun;
        if (!ReadNextChar(false))
            Fail("Unexpected End of File. Expected string value at line %d, position %d.");
        if (m_chCurrent == '"')
            break;
        if (m_chCurrent == '\\')
            ReadEscape();
        else
            m_strToken += m_chCurrent;
        bZeroByte = bZeroByte || m_chCurrent == '\0';
    }
    if (bZeroByte)
        m_strToken.resize(std::strlen(m_strToken.c_str()));
    ReadNextChar(true);
}

void CJsonTextReader::ReadEscape()
{
    if (!ReadNextChar(false))
        Fail("Unexpected End of File. Expected string value at line %d, position %d.");
    switch (m_chCurrent) {
    case '"':
    case '\\':
    case '/':
        m_strToken += m_chCurrent;
        break;
    case 'b':
        m_strToken += '\b';
        break;
    case 'f':
        m_strToken += '\f';
        break;
    case 'n':
        m_strToken += '\n';
        break;
    case 'r':
        m_strToken += '\r';
        break;
    case 't':
        m_strToken += '\t';
        break;
    case 'u': {
        // Deliberate: the four characters are no number. What stays is one character, the upper
        // hexadecimal digit of the first of them, whatever they are, and surrogate pairs give two.
        // Pinned by JsonReading.AUnicodeEscapeGivesOneHexDigit.
        char digits[4];
        if (!ReadNextChars(digits, 4))
            Fail("Unexpected End of File. Expected 4 hexadecimal digits'\\uxxxx' "
                 "at line %d, position %d.");
        m_strToken += "0123456789ABCDEF"[static_cast<unsigned char>(digits[0]) >> 4];
        break;
    }
    default:
        FailFound("Invalid Escape Character '%c' at line %d, position %d.");
    }
}

// From the sign or first digit on; m_strToken is the number as it stands.
void CJsonTextReader::ReadNumber()
{
    m_strToken.clear();
    if (m_chCurrent == '-') {
        m_strToken += '-';
        if (!ReadNextChar(false))
            Fail("Unexpected End of File. Expected a number at line %d, position %d.");
    }
    if (!IsDigit(m_chCurrent))
        FailFound("Expected a digit '0' to '9', found '%c' at line %d, position %d.");
    if (m_chCurrent == '0') {
        m_strToken += '0';
        ReadNextChar(false);
    }
    else {
        ReadDigits();
    }
    if (!m_bEof && m_chCurrent == '.') {
        m_strToken += '.';
        if (!ReadNextChar(false))
            Fail("Unexpected End of File. Expected a digit '0' to '9' at line %d, position %d.");
        if (!IsDigit(m_chCurrent))
            FailFound("Expected a digit '0' to '9', found '%c' at line %d, position %d.");
        ReadDigits();
    }
    if (!m_bEof && (m_chCurrent == 'e' || m_chCurrent == 'E')) {
        m_strToken += m_chCurrent;
        if (!ReadNextChar(false))
            Fail("Unexpected End of File. Expected '+', '-' or a number "
                 "at line %d, position %d.");
        if (m_chCurrent == '+' || m_chCurrent == '-') {
            m_strToken += m_chCurrent;
            if (!ReadNextChar(false))
                Fail("Unexpected End of File. Expected a number at line %d, position %d.");
        }
        // Deliberate: the message speaks of the end of the file wherever the digit is missing.
        // Pinned by JsonFailures.NameTheLineAndThePosition.
        if (!IsDigit(m_chCurrent))
            Fail("Unexpected End of File. Expected a digit '0' to '9' at line %d, position %d.");
        ReadDigits();
    }
    // Deliberate: a comment right behind a number isn't passed, and is refused where the number
    // should go on or end. Pinned by JsonFailures.NameTheLineAndThePosition.
    if (!m_bEof && CWhitespaceUtils::IsWhiteSpace(m_chCurrent))
        ReadNextChar(true);
}

// One digit or more, from the current one on.
void CJsonTextReader::ReadDigits()
{
    do {
        m_strToken += m_chCurrent;
    } while (ReadNextChar(false) && IsDigit(m_chCurrent));
}

void CJsonTextReader::ReadNull()
{
    // Deliberate spelling: the word itself is lower case.
    ReadWord("ull", "Expected 'NULL' at line %d, position %d.",
             "Unexpected End of File. Expected value 'NULL' at line %d, position %d.");
}

void CJsonTextReader::ReadTrue()
{
    ReadWord("rue", "Expected 'true' at line %d, position %d.",
             "Unexpected End of File. Expected value 'true' at line %d, position %d.");
}

void CJsonTextReader::ReadFalse()
{
    ReadWord("alse", "Expected 'false' at line %d, position %d.",
             "Unexpected End of File. Expected value 'false' at line %d, position %d.");
}

// From the first letter on; pszRest is what must follow.
void CJsonTextReader::ReadWord(const char* pszRest, const char* pszWrong, const char* pszEnd)
{
    char rest[4];
    const std::size_t uLength = std::strlen(pszRest);
    if (!ReadNextChars(rest, static_cast<int>(uLength)))
        Fail(pszEnd);
    if (std::memcmp(rest, pszRest, uLength) != 0)
        Fail(pszWrong);
    ReadNextChar(true);
}

// pszFormat takes the line and the position.
void CJsonTextReader::Fail(const char* pszFormat) const
{
    throw CQnValidationException(FormatString(pszFormat, m_iLine, m_iColumn),
                                 m_pHandler->GetPath());
}

// pszFormat takes the current character, the line and the position. A zero byte ends the text.
void CJsonTextReader::FailFound(const char* pszFormat) const
{
    throw CQnValidationException(FormatString(pszFormat, m_chCurrent, m_iLine, m_iColumn),
                                 m_pHandler->GetPath());
}

} // namespace QnXmlLib16
