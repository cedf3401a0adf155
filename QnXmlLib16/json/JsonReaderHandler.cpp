#include "QnXmlLib16/json/JsonReaderHandler.h"

namespace QnXmlLib16 {

IJsonReaderHandler::IJsonReaderHandler() : CInstanceMonitor("IJsonReaderHandler") {}

IJsonReaderHandler::~IJsonReaderHandler() = default;

CJsonReaderDefaultHandler::CJsonReaderDefaultHandler() = default;

CJsonReaderDefaultHandler::~CJsonReaderDefaultHandler() = default;

void CJsonReaderDefaultHandler::SetInnerHandler(IJsonReaderHandler* pHandler)
{
    m_pInnerHandler = pHandler;
}

void CJsonReaderDefaultHandler::ReadStartDocument()
{
    m_iDepth = 0;
    if (m_pInnerHandler)
        m_pInnerHandler->ReadStartDocument();
}

void CJsonReaderDefaultHandler::ReadEndDocument()
{
    if (m_pInnerHandler)
        m_pInnerHandler->ReadEndDocument();
}

void CJsonReaderDefaultHandler::ReadName(const std::string& strName)
{
    SItem* pTop = Top();
    SItem& name = pTop && pTop->eType == item_name ? *pTop : Push(item_name);
    name.strName = strName;
    if (m_pInnerHandler)
        m_pInnerHandler->ReadName(strName);
}

void CJsonReaderDefaultHandler::ReadString(const std::string& strValue)
{
    if (m_pInnerHandler)
        m_pInnerHandler->ReadString(strValue);
}

void CJsonReaderDefaultHandler::ReadNumber(const std::string& strNumber)
{
    if (m_pInnerHandler)
        m_pInnerHandler->ReadNumber(strNumber);
}

void CJsonReaderDefaultHandler::ReadStartObject()
{
    SItem* pTop = Top();
    if (pTop && pTop->eType == item_array) {
        const std::size_t uArray = m_iDepth - 1;
        SItem& object = Push(item_object);
        SItem& array = m_vecPath[uArray];
        // Deliberate: the index is one byte and no digits, 0x02 for the third object. Paths are
        // for people who know the document; nothing reads them. Pinned by
        // JsonFailures.NameTheInnermostMemberFirstAndItemsByTheirIndexAsAByte.
        object.strName = array.strName;
        object.strName += '[';
        object.strName += static_cast<char>(++array.iIndex);
        object.strName += ']';
    }
    else {
        PushContainer(item_object);
    }
    if (m_pInnerHandler)
        m_pInnerHandler->ReadStartObject();
}

void CJsonReaderDefaultHandler::ReadEndObject()
{
    PopThrough(item_object);
    if (m_pInnerHandler)
        m_pInnerHandler->ReadEndObject();
}

void CJsonReaderDefaultHandler::ReadStartArray()
{
    PushContainer(item_array);
    if (m_pInnerHandler)
        m_pInnerHandler->ReadStartArray();
}

void CJsonReaderDefaultHandler::ReadEndArray()
{
    PopThrough(item_array);
    if (m_pInnerHandler)
        m_pInnerHandler->ReadEndArray();
}

void CJsonReaderDefaultHandler::ReadBool(bool bValue)
{
    if (m_pInnerHandler)
        m_pInnerHandler->ReadBool(bValue);
}

void CJsonReaderDefaultHandler::ReadNull()
{
    if (m_pInnerHandler)
        m_pInnerHandler->ReadNull();
}

std::string CJsonReaderDefaultHandler::GetPath()
{
    // Deliberate: the innermost name comes first. Pinned by
    // JsonFailures.NameTheInnermostMemberFirstAndItemsByTheirIndexAsAByte.
    std::string strPath = "$";
    for (std::size_t u = m_iDepth; u-- > 0;) {
        const SItem& item = m_vecPath[u];
        if (item.eType == item_array)
            continue;
        strPath += '.';
        strPath += item.strName;
    }
    return strPath;
}

CJsonReaderDefaultHandler::SItem* CJsonReaderDefaultHandler::Top()
{
    return m_iDepth == 0 ? nullptr : &m_vecPath[m_iDepth - 1];
}

// An item without a name; it may move those below it.
CJsonReaderDefaultHandler::SItem& CJsonReaderDefaultHandler::Push(EItem eType)
{
    if (m_iDepth == m_vecPath.size())
        m_vecPath.emplace_back();
    SItem& item = m_vecPath[m_iDepth++];
    item.strName.clear();
    item.iIndex = -1;
    item.eType = eType;
    return item;
}

// A container takes the place of the name it is the value of. The outermost one has no item.
void CJsonReaderDefaultHandler::PushContainer(EItem eType)
{
    SItem* pTop = Top();
    if (!pTop)
        return;
    if (pTop->eType == item_name)
        pTop->eType = eType; // its name stays and its index is -1
    else
        Push(eType);
}

void CJsonReaderDefaultHandler::PopThrough(EItem eType)
{
    while (m_iDepth > 0) {
        if (m_vecPath[--m_iDepth].eType == eType)
            break;
    }
}

} // namespace QnXmlLib16
