#pragma once

#include "QnXmlLib16/support/internal/ShortText.h"

#include <array>
#include <cstddef>
#include <string>

namespace QnXmlLib16 {

constexpr char kNamePartEnd = '\x01';

// The key of a qualified name in the name maps of a vocabulary. Takes the place of what strKey
// held, whose memory it uses again.
inline void MakeNameKey(std::string& strKey, const std::string& strPrefix,
                        const std::string& strNamespace, const std::string& strLocalName)
{
    strKey.assign(strLocalName);
    strKey += kNamePartEnd;
    strKey += strNamespace;
    strKey += kNamePartEnd;
    strKey += strPrefix;
}

// Whether MakeNameKey of the parts would make this key.
inline bool IsNameKey(const std::string& strKey, const std::string& strPrefix,
                      const std::string& strNamespace, const std::string& strLocalName)
{
    if (strKey.size() != strPrefix.size() + strNamespace.size() + strLocalName.size() + 2)
        return false;
    const char* const pNamespace = strKey.data() + strLocalName.size() + 1;
    const char* const pPrefix = pNamespace + strNamespace.size() + 1;
    return EqualBytes(strKey.data(), strLocalName.data(), strLocalName.size()) &&
           pNamespace[-1] == kNamePartEnd && pPrefix[-1] == kNamePartEnd &&
           EqualBytes(pNamespace, strNamespace.data(), strNamespace.size()) &&
           EqualBytes(pPrefix, strPrefix.data(), strPrefix.size());
}

// The indexes of the names of one map that were met last, so that these are found without making a
// key.
class CNameCache
{
public:
    // Where the index of a name is looked for and kept; 0: nothing is.
    unsigned long& Slot(const std::string& strLocalName)
    {
        std::size_t n = strLocalName.size();
        if (n != 0)
            n = n * 13 + static_cast<unsigned char>(strLocalName.front()) * 5 +
                static_cast<unsigned char>(strLocalName.back());
        return m_aiIndexes[n % m_aiIndexes.size()];
    }

private:
    std::array<unsigned long, 64> m_aiIndexes{};
};

} // namespace QnXmlLib16
