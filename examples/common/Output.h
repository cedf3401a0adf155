// What the example programs share: the options that choose an output form, writing an object in
// that form, and the report of a fault.
#pragma once

#include "QnXmlLib16/QnXmlLib16.h"

#include <string>

namespace examples {

// Exit codes of the programs.
enum : int
{
    kExitGood = 0,
    kExitBadInput = 1,
    kExitBadUsage = 2
};

// Wrong usage of a program; what() is one line for the user.
class CUsageError : public std::exception
{
public:
    explicit CUsageError(std::string strText) : m_strText(std::move(strText)) {}
    const char* what() const noexcept override { return m_strText.c_str(); }

private:
    std::string m_strText;
};

// The forms of a document.
enum class Form
{
    Xml,
    Json,
    FastInfoset
};

// How an object is written, and the settings that reading shares with it.
struct COutput
{
    Form m_eForm = Form::Xml;
    bool m_bHeader = true;
    bool m_bFormat = false;
    QnXmlLib16::XmlEncoding m_eEncoding = QnXmlLib16::XmlEncoding_UTF8;
    QnXmlLib16::EOLType m_eEOL = QnXmlLib16::EOLType_LF;
    QnXmlLib16::FInfoDecl m_eDeclaration{};
    QnXmlLib16::CompressionType m_eCompression = QnXmlLib16::CompressionType_None;
    QnXmlLib16::CSerializationContext m_context;

    // Comments in JSON input are a fault unless --comments allows them.
    COutput();

    // Takes strName (with its dashes) if it is one of the options below. An option with a value
    // reads it from pszValue, which is null at the end of the command line; rUsed then says so.
    // Throws CUsageError for a value that the option does not know.
    bool TakeOption(const std::string& strName, const char* pszValue, bool& rUsed);

    // The object in the chosen form, as bytes.
    QnXmlLib16::CBinaryData ToBytes(const QnXmlLib16::CXmlObjectBase& object) const;

    // Puts the bytes into the file, or on standard output where the path is empty.
    void Write(const std::string& strPath, const QnXmlLib16::CBinaryData& data) const;

    // The lines of --help that tell these options.
    static const char* Help();
};

// Whether the file, plain or compressed, holds JSON: its first significant character tells. False
// for a file that can't be read, which loading then reports.
bool HoldsJson(const std::string& strPath);

// Uses a UTF-8 code page, so that text beyond ASCII survives whatever LANG says.
void UseUtf8CodePage();

// Runs the program and turns what it throws into a message on standard error and an exit code:
// the library's whole message chain for bad input, one line and a hint at --help for wrong usage.
int RunProgram(const char* pszName, int (*fnRun)(int, char**), int argc, char** argv);

} // namespace examples
