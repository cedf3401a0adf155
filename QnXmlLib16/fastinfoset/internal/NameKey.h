#pragma once

#include "QnXmlLib16/fastinfoset/FIVocabulary.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
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

// As memcmp == 0. Names were often copied just before: loads of the sizes that copies store in don't
// have to wait until these have reached the cache.
inline bool EqualBytes(const char* p, const char* q, std::size_t nLength)
{
    const auto differ = [](const char* pLeft, const char* pRight, auto left) {
        decltype(left) right;
        std::memcpy(&left, pLeft, sizeof left);
        std::memcpy(&right, pRight, sizeof right);
        return left != right;
    };
    if (nLength >= 8) {
        const std::size_t nLast = nLength - 8;
        for (std::size_t n = 0; n < nLast; n += 8)
            if (differ(p + n, q + n, std::uint64_t()))
                return false;
        return !differ(p + nLast, q + nLast, std::uint64_t());
    }
    if (nLength >= 4)
        return !differ(p, q, std::uint32_t()) &&
               !differ(p + nLength - 4, q + nLength - 4, std::uint32_t());
    for (std::size_t n = 0; n < nLength; ++n)
        if (p[n] != q[n])
            return false;
    return true;
}

inline bool EqualText(const std::string& str, const std::string& strOther)
{
    return str.size() == strOther.size() && EqualBytes(str.data(), strOther.data(), str.size());
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

// The rows of one name map that were met last, found without making a key. The map must not lose
// rows.
class CNameCache
{
public:
    using Row = CFIVocabulary::CIndexMap::value_type;

    // Where the row of a name is to be looked for and kept. Null: nothing is.
    const Row*& Slot(const std::string& strLocalName)
    {
        std::size_t n = strLocalName.size();
        if (n != 0)
            n = n * 13 + static_cast<unsigned char>(strLocalName.front()) * 5 +
                static_cast<unsigned char>(strLocalName.back());
        return m_apRows[n % m_apRows.size()];
    }

private:
    std::array<const Row*, 64> m_apRows{};
};

} // namespace QnXmlLib16
