#pragma once

#include "QnXmlLib16/QnXmlLib16.h"

#include <string>
#include <vector>

// Turns the calls of a writer into lines.
class CRecordingWriter : public QnXmlLib16::CXmlWriter
{
public:
    CRecordingWriter() : CXmlWriter("CRecordingWriter") {}

    void WriteComment(const std::string&) override {}
    void WritePI(const std::string&) override {}
    void WriteInlineSchema(const std::string&) override {}
    void WriteAttributeType(const std::string&, const std::string&, QnXmlLib16::ItemType) override
    {}
    void WriteAttributeNil() override {}
    void WriteStartElement(const std::string& strName, const std::string& strNamespace) override
    {
        m_strLines += "<" + strName + " {" + strNamespace + "}\n";
    }
    void WriteString(const std::string& strValue, QnXmlLib16::ItemType eType, bool) override
    {
        m_strLines += strValue + " " + std::to_string(eType) + "\n";
    }
    void WriteEndElement() override { m_strLines += ">\n"; }
    void WriteAttributeString(const std::string& strName, const std::string& strNamespace,
                              const std::string& strValue, QnXmlLib16::ItemType eType) override
    {
        m_strLines += "@" + strName + " {" + strNamespace + "} ";
        WriteString(strValue, eType, false);
    }

    std::string m_strLines;
};

inline std::string RecordedBy(const QnXmlLib16::CXmlObjectBase& object)
{
    CRecordingWriter writer;
    QnXmlLib16::CXmlObjectBase::ToXml_Int(
        &object, &writer, false, "", QnXmlLib16::CSerializationContext::m_defaultContext, false);
    return writer.m_strLines;
}

// Writes down what it hears: the message, the index that the data of a removal points to or "null",
// and in parentheses the count of the collection at that moment.
class CRecordingSink : public QnXmlLib16::IEventSink
{
public:
    void OnEvent(QnXmlLib16::CXmlObjectBase* pSender, MsgType message, void* pData) override
    {
        m_vecData.push_back(pData);
        m_strHeard += std::to_string(message);
        if (message == MsgType_Remove || message == MsgType_RemoveComplete)
            m_strHeard += pData ? ":" + std::to_string(*static_cast<int*>(pData)) : ":null";
        const auto& col = dynamic_cast<QnXmlLib16::CXmlCollectionBase&>(*pSender);
        m_strHeard += "(" + std::to_string(col.GetCount()) + ") ";
    }
    QnXmlLib16::CXmlObjectBase* GetBase() override { return nullptr; }

    std::string TakeHeard() { return std::exchange(m_strHeard, std::string()); }

    std::vector<void*> m_vecData;

private:
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
