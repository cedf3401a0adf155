#pragma once

#include <string>

namespace QnXmlLib16 {

// The key of a qualified name in the name maps of a vocabulary. Takes the place of what strKey
// held, whose memory it uses again.
inline void MakeNameKey(std::string& strKey, const std::string& strPrefix,
                        const std::string& strNamespace, const std::string& strLocalName)
{
    strKey.assign(strLocalName);
    strKey += '\x01';
    strKey += strNamespace;
    strKey += '\x01';
    strKey += strPrefix;
}

} // namespace QnXmlLib16
