#pragma once

#include "QnXmlLib16/values/BinaryData.h"

#include <string>

// The bytes as a text, whatever they are.
inline std::string ToText(const QnXmlLib16::CBinaryData& data)
{
    return std::string(reinterpret_cast<const char*>(data.GetData()), data.GetLength());
}

// The text as bytes, without a terminator.
inline QnXmlLib16::CBinaryData ToData(const std::string& strText)
{
    QnXmlLib16::CBinaryData data;
    data.SetBuffer(reinterpret_cast<const unsigned char*>(strText.data()), strText.size());
    return data;
}

// The text several times.
inline std::string Repeated(const std::string& strText, std::size_t nCount)
{
    std::string strAll;
    strAll.reserve(strText.size() * nCount);
    for (; nCount > 0; --nCount)
        strAll += strText;
    return strAll;
}
