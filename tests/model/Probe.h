#pragma once

#include "QnXmlLib16/binding/ElementInfo.h"
#include "QnXmlLib16/binding/ParentElementInfo.h"
#include "QnXmlLib16/binding/XmlGeneratedClass.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Model {

// An entry of an element table that does what a test tells it.
class CScriptInfo : public QnXmlLib16Data::CElementInfo
{
public:
    explicit CScriptInfo(const char* pszName) : CElementInfo(pszName, "", 0) {}

    std::function<bool(QnXmlLib16::CXmlElement*& pCursor)> m_read;
    std::function<bool(QnXmlLib16::CXmlWriter& writer)> m_write;
    std::function<bool(bool bWasRead, bool bIsRealElement)> m_validate; // unset: as inherited

    bool ElementToXml(const QnXmlLib16::CSerializationContext& context,
                      const QnXmlLib16::CXmlGeneratedClass* pObject,
                      QnXmlLib16::CXmlWriter* pWriter) const override;
    bool ElementFromXml(const QnXmlLib16::CSerializationContext& context,
                        QnXmlLib16::CXmlGeneratedClass* pObject, QnXmlLib16::CXmlElement* pParent,
                        QnXmlLib16::CXmlElement** ppCursor, const char* pszNamespace,
                        QnXmlLib16::XmlElementType ownerType) override;
    bool Validate(const QnXmlLib16::CSerializationContext& context,
                  const QnXmlLib16::CXmlGeneratedClass* pObject, bool bWasRead,
                  bool bIsRealElement) const override;
};

// A generated class whose record and tables belong to the object and are a test's to fill.
class CProbe : public QnXmlLib16::CXmlGeneratedClass
{
public:
    explicit CProbe(QnXmlLib16::XmlElementGroupType groupType,
                    QnXmlLib16::XmlElementType elementType = QnXmlLib16::XmlElementType_Element,
                    int nValueProperty = -1, QnXmlLib16::ItemType valueType = QnXmlLib16::it_none,
                    bool bRawValue = false);
    ~CProbe() override;

    // Both take ownership.
    CScriptInfo& AddElement(std::unique_ptr<CScriptInfo> pEntry);
    void AddAttribute(std::unique_ptr<QnXmlLib16Data::CAttributeInfo> pEntry);

    // A table from words like "o:a t:b", each a kind and a name:
    //   o  an optional member: takes its element if it is there, and is done either way
    //   t  takes its element or does not match; in an all group it may be absent
    //   m  as t, but an all group can't do without it
    //   c  takes all elements of its name in a row and is done
    // What they take is listed in m_strTaken.
    void AddElements(const std::string& strWords);

    using CXmlGeneratedClass::GetBase;
    QnXmlLib16::CXmlObjectBase* GetBase() override { return this; }
    std::string GetTargetNamespace() const override { return ""; }
    std::string GetNamespace() const override { return ""; }
    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    QnXmlLib16Data::CParentElementInfo* GetClassInfo() const override { return m_pInfo; }
    QnXmlLib16Data::CElementInfo** GetClassElementInfo() const override { return m_ppElements; }
    QnXmlLib16Data::CAttributeInfo** GetClassAttributeInfo() const override
    {
        return m_ppAttributes;
    }
    void Init() override { m_strTaken.clear(); }

    std::function<void(int nProperty, bool bRead, QnXmlLib16::QnVariant& value)> m_access;
    std::string m_strTaken; // names, each with a blank behind it

private:
    QnXmlLib16Data::CParentElementInfo* m_pInfo;
    QnXmlLib16Data::CElementInfo** m_ppElements;
    QnXmlLib16Data::CAttributeInfo** m_ppAttributes;
};

} // namespace Model
