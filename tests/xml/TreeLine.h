#pragma once

#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/XmlElement.h"

#include <string>

// "{uri}name[{uri}attribute='value'] 'text' (children)", each part as far as it is there.
inline std::string TreeLine(const QnXmlLib16::CXmlElement& element)
{
    const auto name = [](const auto& node) {
        const std::string& strUri = node.GetNamespaceURI();
        return (strUri.empty() ? "" : '{' + strUri + '}') + node.GetLocalName();
    };
    std::string str = name(element);
    for (const QnXmlLib16::CXmlAttribute* pAttribute : element.GetAttributes())
        str += '[' + name(*pAttribute) + "='" + pAttribute->GetValue() + "']";
    if (!element.GetText().empty())
        str += " '" + element.GetText() + '\'';
    if (const QnXmlLib16::CXmlElement* pChild = element.GetFirstElement()) {
        str += " (";
        for (; pChild; pChild = pChild->GetNextSiblingElement())
            str += TreeLine(*pChild) + (pChild->GetNextSiblingElement() ? " " : "");
        str += ')';
    }
    return str;
}
