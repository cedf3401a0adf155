#include "Probe.h"

#include "QnXmlLib16/binding/AttributeInfo.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/xml/XmlElement.h"

#include <sstream>

using namespace QnXmlLib16;
using QnXmlLib16Data::CAttributeInfo;
using QnXmlLib16Data::CElementInfo;
using QnXmlLib16Data::CParentElementInfo;

namespace Model {

namespace {

template <class TInfo>
void Append(TInfo**& ppTable, TInfo* pEntry)
{
    std::size_t nCount = 0;
    while (ppTable[nCount])
        ++nCount;
    TInfo** const ppNew = new TInfo*[nCount + 2];
    std::copy(ppTable, ppTable + nCount, ppNew);
    ppNew[nCount] = pEntry;
    ppNew[nCount + 1] = nullptr;
    delete[] ppTable;
    ppTable = ppNew;
}

} // namespace

bool CScriptInfo::ElementToXml(const CSerializationContext&, const CXmlGeneratedClass*,
                               CXmlWriter* pWriter) const
{
    return m_write && m_write(*pWriter);
}

bool CScriptInfo::ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                                 CXmlElement** ppCursor, const char*, XmlElementType)
{
    return m_read(*ppCursor);
}

bool CScriptInfo::Validate(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                           bool bWasRead, bool bIsRealElement) const
{
    return m_validate ? m_validate(bWasRead, bIsRealElement)
                      : CElementInfo::Validate(context, pObject, bWasRead, bIsRealElement);
}

CProbe::CProbe(XmlElementGroupType groupType, XmlElementType elementType, int nValueProperty,
               ItemType valueType, bool bRawValue)
    : m_pInfo(new CParentElementInfo(groupType, elementType, "ProbeType", "urn:probe", true, false,
                                     nValueProperty, valueType, nullptr, bRawValue)),
      m_ppElements(new CElementInfo* [1] { nullptr }),
      m_ppAttributes(new CAttributeInfo* [1] { nullptr })
{
    SetElementName("probe");
}

CProbe::~CProbe()
{
    CleanMetaData(m_pInfo, m_ppElements, m_ppAttributes);
}

CScriptInfo& CProbe::AddElement(std::unique_ptr<CScriptInfo> pEntry)
{
    CScriptInfo* const pAdded = pEntry.release();
    Append<CElementInfo>(m_ppElements, pAdded);
    return *pAdded;
}

void CProbe::AddAttribute(std::unique_ptr<CAttributeInfo> pEntry)
{
    Append(m_ppAttributes, pEntry.release());
}

void CProbe::AddElements(const std::string& strWords)
{
    std::istringstream words(strWords);
    for (std::string strWord; words >> strWord;) {
        const char cKind = strWord[0];
        const std::string strName = strWord.substr(2);
        CScriptInfo& entry = AddElement(std::make_unique<CScriptInfo>(strName.c_str()));
        entry.m_read = [this, cKind, strName](CXmlElement*& pCursor) {
            bool bTaken = false;
            while (pCursor && pCursor->GetLocalName() == strName && (!bTaken || cKind == 'c')) {
                m_strTaken += strName + " ";
                pCursor = pCursor->GetNextSiblingElement();
                bTaken = true;
            }
            return bTaken || cKind == 'o' || cKind == 'c';
        };
        if (cKind == 't')
            entry.m_validate = [](bool, bool) { return true; };
        if (cKind == 'm') {
            entry.m_validate = [strName](bool bWasRead, bool bIsRealElement) {
                if (bIsRealElement && !bWasRead)
                    throw CQnValidationException(
                        "Failed to find the mandatory element [" + strName + "].", "");
                return bWasRead;
            };
        }
    }
}

void CProbe::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    if (m_access)
        m_access(nProperty, bRead, value);
}

} // namespace Model
