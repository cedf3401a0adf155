#pragma once

#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/support/InstanceMonitor.h"

#include <cstddef>
#include <string>
#include <vector>

namespace QnXmlLib16 {

// Receives what CJsonTextReader reads, in the order of the text. Names and texts hold no zero
// byte: they end at the first one. A handler may throw; the exception leaves Read as it is.
class QNXML_API IJsonReaderHandler : public CInstanceMonitor
{
public:
    IJsonReaderHandler();
    ~IJsonReaderHandler() override;

    virtual void ReadStartDocument() = 0;
    virtual void ReadEndDocument() = 0;

    // The name of a member; its value is the next event.
    virtual void ReadName(const std::string& strName) = 0;

    virtual void ReadString(const std::string& strValue) = 0;

    // The number as it stands in the text, whatever its length.
    virtual void ReadNumber(const std::string& strNumber) = 0;

    virtual void ReadStartObject() = 0;
    virtual void ReadEndObject() = 0;
    virtual void ReadStartArray() = 0;
    virtual void ReadEndArray() = 0;
    virtual void ReadBool(bool bValue) = 0;
    virtual void ReadNull() = 0;
};

// Says where in a document the reading has come to.
class QNXML_API IErrorPathProvider
{
public:
    virtual std::string GetPath() = 0;

protected:
    ~IErrorPathProvider() = default;
};

// Stands first in the chain of handlers: follows the location for failures and passes each event
// on to the inner handler.
class QNXML_API CJsonReaderDefaultHandler : public IJsonReaderHandler, public IErrorPathProvider
{
public:
    CJsonReaderDefaultHandler();
    ~CJsonReaderDefaultHandler() override;

    // The handler stays the caller's. Null, as at the start: events stop here.
    void SetInnerHandler(IJsonReaderHandler* pHandler);

    // Forgets the location of an earlier document.
    void ReadStartDocument() override;
    void ReadEndDocument() override;
    void ReadName(const std::string& strName) override;
    void ReadString(const std::string& strValue) override;
    void ReadNumber(const std::string& strNumber) override;
    void ReadStartObject() override;
    void ReadEndObject() override;
    void ReadStartArray() override;
    void ReadEndArray() override;
    void ReadBool(bool bValue) override;
    void ReadNull() override;

    // "$", then "." and the name of each name and object, the innermost first: "$.b.a" for the
    // member b inside a. An object in an array bears the array's name and "[", its index as one
    // byte, "]".
    std::string GetPath() override;

private:
    enum EItem
    {
        item_array = 0,
        item_name = 1,
        item_object = 2
    };

    struct SItem
    {
        std::string strName;
        int iIndex = -1; // of the last object in an array
        EItem eType = item_name;
    };

    SItem* Top();
    SItem& Push(EItem eType);
    void PushContainer(EItem eType);
    void PopThrough(EItem eType);

    // The first m_iDepth items are the path; the others keep their memory for the next member.
    std::vector<SItem> m_vecPath;
    std::size_t m_iDepth = 0;
    IJsonReaderHandler* m_pInnerHandler = nullptr; // not owned
};

} // namespace QnXmlLib16
