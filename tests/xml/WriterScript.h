#pragma once

#include "QnXmlLib16/QnXmlLib16.h"

#include <functional>
#include <sstream>
#include <string>

// Makes the calls that a script names. Its words stand between blanks, each a call:
//
//   <name    starts an element            >        ends it
//   @k=v     an attribute                 @nil     the attribute nil
//   :T       the attribute type           'x       a string
//   ~x       a string, as the default     #5       a string of type i4
//   !x       a comment                    ?x       a processing instruction
//   $x       an inline schema             [ ]      the states before and behind the items
//   +p=u     adds namespace u with p      =u       sets the default namespace
//
// The namespace of an element, attribute or type stands in braces in front of its name.
inline void RunScript(QnXmlLib16::CXmlWriter& writer, const std::string& strScript)
{
    using namespace QnXmlLib16;
    std::istringstream script(strScript);
    for (std::string strWord; script >> strWord;) {
        const char cCall = strWord[0];
        const std::size_t nBrace = strWord.find('{') == 1 ? strWord.find('}') : 0;
        const std::string strNamespace = nBrace ? strWord.substr(2, nBrace - 2) : "";
        const std::string strRest = strWord.substr(nBrace + 1);
        const std::size_t nEqual = std::min(strRest.find('='), strRest.size() - 1);
        const std::string strName = strRest.substr(0, nEqual); // of what has a value
        const std::string strValue = strRest.substr(nEqual + 1);
        if (cCall == '<')
            writer.WriteStartElement(strRest, strNamespace);
        else if (cCall == '>')
            writer.WriteEndElement();
        else if (strWord == "@nil")
            writer.WriteAttributeNil();
        else if (cCall == '@')
            writer.WriteAttributeString(strName, strNamespace, strValue, it_string);
        else if (cCall == ':')
            writer.WriteAttributeType(strNamespace, strRest, it_string);
        else if (cCall == '\'' || cCall == '~' || cCall == '#')
            writer.WriteString(strRest, cCall == '#' ? it_i4 : it_string, cCall == '~');
        else if (cCall == '!')
            writer.WriteComment(strRest);
        else if (cCall == '?')
            writer.WritePI(strRest);
        else if (cCall == '$')
            writer.WriteInlineSchema(strRest);
        else if (cCall == '[' || cCall == ']')
            writer.SetContextState(cCall == '[' ? CXmlWriter::ContextState_BeforeItems
                                                : CXmlWriter::ContextState_AfterItems);
        else if (cCall == '+')
            writer.AddNamespace(strName, strValue);
        else if (cCall == '=')
            writer.SetDefaultNamespace(strRest);
    }
}

// What the steps make a writer put out, unformatted unless they choose otherwise; "<message>"
// follows where they fail.
template <class TWriter>
std::string WrittenBy(const std::function<void(TWriter&)>& steps,
                      QnXmlLib16::XmlEncoding eEncoding = QnXmlLib16::XmlEncoding_UTF8)
{
    QnXmlLib16::CTextStream stream(eEncoding);
    TWriter writer(stream);
    std::string strFailure;
    try {
        writer.Open();
        writer.SetFormat(false);
        steps(writer);
        writer.Close();
    }
    catch (const QnXmlLib16::CQnException& e) {
        strFailure = "<" + e.GetMessage() + ">";
    }
    return stream.GetText() + strFailure;
}

class CCountingStream : public QnXmlLib16::CTextStream
{
public:
    void Flush() override { ++m_iFlushes; }
    int m_iFlushes = 0;
};
