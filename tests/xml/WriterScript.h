#pragma once

#include "QnXmlLib16/QnXmlLib16.h"

#include <algorithm>
#include <functional>
#include <map>
#include <sstream>
#include <string>

// Makes the calls that a script names. Its words stand between blanks, each a call:
//
//   <name    starts an element            >        ends it
//   @k=v     an attribute                 @nil     the attribute nil
//   :T       the attribute type           'x       a string
//   ~x       a string, as the default     !x       a comment
//   ?x       a processing instruction     $x       an inline schema
//   [ ]      the states before and behind the items
//   +p=u     adds namespace u with p      =u       sets the default namespace
//
// The namespace of an element, attribute or type stands in braces in front of its name, the type of
// a value that is no string in parentheses in front of the value. '^' is a zero byte.
inline void RunScript(QnXmlLib16::CXmlWriter& writer, const std::string& strScript)
{
    using namespace QnXmlLib16;
    static const std::map<std::string, ItemType> mapTypes = {
        {"", it_string},     {"(base64)", it_base64Binary},
        {"(char)", it_char}, {"(decimal)", it_decimal},
        {"(i2)", it_i2},     {"(i4)", it_i4},
    };
    std::istringstream script(strScript);
    for (std::string strWord; script >> strWord;) {
        std::replace(strWord.begin(), strWord.end(), '^', '\0');
        const char cCall = strWord[0];
        const std::size_t nBrace = strWord.find('{') == 1 ? strWord.find('}') : 0;
        const std::string strNamespace = nBrace ? strWord.substr(2, nBrace - 2) : "";
        const std::string strRest = strWord.substr(nBrace + 1);
        const std::size_t nEqual = std::min(strRest.find('='), strRest.size() - 1);
        const std::string strName = strRest.substr(0, nEqual); // of what has a value
        const std::string strTyped = cCall == '\'' ? strRest : strRest.substr(nEqual + 1);
        const std::size_t nValue = strTyped[0] == '(' ? strTyped.find(')') + 1 : 0;
        const ItemType eType = mapTypes.at(strTyped.substr(0, nValue));
        const std::string strValue = strTyped.substr(nValue);
        if (cCall == '<')
            writer.WriteStartElement(strRest, strNamespace);
        else if (cCall == '>')
            writer.WriteEndElement();
        else if (strWord == "@nil")
            writer.WriteAttributeNil();
        else if (cCall == '@')
            writer.WriteAttributeString(strName, strNamespace, strValue, eType);
        else if (cCall == ':')
            writer.WriteAttributeType(strNamespace, strRest, it_string);
        else if (cCall == '\'')
            writer.WriteString(strValue, eType, false);
        else if (cCall == '~')
            writer.WriteString(strRest, it_string, true);
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
std::string WrittenBy(const std::function<void(TWriter&)>& steps)
{
    QnXmlLib16::CTextStream stream;
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
