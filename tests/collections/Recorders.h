#pragma once

#include "QnXmlLib16/binding/XmlObjectBase.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/xml/XmlWriter.h"

#include <functional>
#include <string>
#include <typeinfo>
#include <vector>

// Turns the calls of a writer into lines.
class CRecordingWriter : public QnXmlLib16::CXmlWriter
{
public:
    CRecordingWriter() : CXmlWriter("CRecordingWriter") {}

    void WriteComment(const std::string&) override {}
    void WritePI(const std::string&) override {}
    void WriteInlineSchema(const std::string&) override {}
    void WriteStartElement(const std::string& strName, const std::string& strNamespace) override
    {
        m_strLines += "<" + strName + " {" + strNamespace + "}\n";
    }
    void WriteString(const std::string& strValue, QnXmlLib16::ItemType eType,
                     bool bDefault) override
    {
        m_strLines += strValue + " " + std::to_string(eType) + (bDefault ? " default\n" : "\n");
    }
    void WriteEndElement() override { m_strLines += ">\n"; }
    void WriteAttributeString(const std::string& strName, const std::string& strNamespace,
                              const std::string& strValue, QnXmlLib16::ItemType eType) override
    {
        m_strLines += "@" + strName + " {" + strNamespace + "} " + strValue + " " +
                      std::to_string(eType) + "\n";
    }
    void WriteAttributeType(const std::string&, const std::string&, QnXmlLib16::ItemType) override
    {}
    void WriteAttributeNil() override {}

    std::string m_strLines;
};

// Writes down what it hears: the message, and the index that the data points to or "null". With a
// collection it also tells the count at that moment. Data that is an item is kept in m_vecData.
class CRecordingSink : public QnXmlLib16::IEventSink
{
public:
    explicit CRecordingSink(std::function<int()> fnCount = nullptr) : m_fnCount(std::move(fnCount))
    {}

    void OnEvent(QnXmlLib16::CXmlObjectBase* pSender, MsgType message, void* pData) override
    {
        m_pSender = pSender;
        m_vecData.push_back(pData);
        m_strHeard += std::to_string(message);
        if (message == MsgType_Remove || message == MsgType_RemoveComplete)
            m_strHeard += pData ? ":" + std::to_string(*static_cast<int*>(pData)) : ":null";
        if (m_fnCount)
            m_strHeard += "(" + std::to_string(m_fnCount()) + ")";
        m_strHeard += " ";
        ++m_nHeard;
    }
    QnXmlLib16::CXmlObjectBase* GetBase() override { return nullptr; }

    std::string TakeHeard() { return std::exchange(m_strHeard, std::string()); }

    QnXmlLib16::CXmlObjectBase* m_pSender = nullptr;
    std::vector<void*> m_vecData;
    int m_nHeard = 0;

private:
    std::function<int()> m_fnCount;
    std::string m_strHeard;
};

// "Class: message" of the failure of a call, "none" without one.
template <class Call>
std::string FailureOf(Call call)
{
    using namespace QnXmlLib16;
    try {
        call();
    }
    catch (const CQnException& e) {
        const std::type_info& type = typeid(e);
        const char* pszClass = type == typeid(CQnException)                   ? "Qn"
                               : type == typeid(CQnValidationException)       ? "Validation"
                               : type == typeid(CQnInvalidNamespaceException) ? "Namespace"
                               : type == typeid(CQnInvalidValueException)     ? "Value"
                               : type == typeid(CQnInvalidStateException)     ? "State"
                               : type == typeid(CQnInvalidParamException)     ? "Param"
                                                                              : "other";
        return std::string(pszClass) + ": " + e.GetMessage();
    }
    return "none";
}
