#pragma once

#include "QnXmlLib16/binding/ParentElementInfo.h"
#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/binding/XmlGeneratedClass.h"
#include "QnXmlLib16/collections/XmlCollection.h"
#include "QnXmlLib16/collections/stringCol.h"
#include "QnXmlLib16/values/QnVariant.h"

#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

// Bound classes whose record and tables are what a generator emits, and whose properties are
// variants with numbers, so that a class is no more than its tables.
namespace Model {

inline constexpr auto kReal = QnXmlLib16::XmlElementType_Element;
inline constexpr auto kPseudo = QnXmlLib16::XmlElementType_PseudoElement;

class CSheet;
class CTables;

// What a property holds from the start, and again after each Init.
struct CHeld
{
    int nProperty;
    std::function<void(QnXmlLib16::QnVariant&)> hold;
};

CHeld HeldSheet(int nProperty, const CTables& tables, const char* pszName = "");
CHeld HeldObject(int nProperty, std::function<QnXmlLib16::CXmlObjectBase*()> make);
CHeld HeldItems(int nProperty, std::function<QnXmlLib16::CXmlCollectionBase*()> make);

// Record and tables of one class. Its class id is good for MakeSheet as long as it lives.
class CTables
{
public:
    // Both take ownership of the entries, the second of the record too.
    CTables(QnXmlLib16::XmlElementGroupType groupType, QnXmlLib16::XmlElementType elementType,
            std::vector<QnXmlLib16Data::CElementInfo*> elements,
            std::vector<QnXmlLib16Data::CAttributeInfo*> attributes = {},
            std::vector<CHeld> held = {});
    CTables(QnXmlLib16Data::CParentElementInfo* pInfo,
            std::vector<QnXmlLib16Data::CElementInfo*> elements,
            std::vector<QnXmlLib16Data::CAttributeInfo*> attributes = {},
            std::vector<CHeld> held = {});
    CTables(const CTables&) = delete;
    CTables& operator=(const CTables&) = delete;
    ~CTables();

    int GetClassId() const { return m_nClassId; }
    // What GetNamespace() of the objects answers.
    std::string m_strNamespace;

private:
    friend class CSheet;

    QnXmlLib16Data::CParentElementInfo* m_pInfo;
    std::vector<QnXmlLib16Data::CElementInfo*> m_vecElements;
    std::vector<QnXmlLib16Data::CAttributeInfo*> m_vecAttributes;
    std::vector<CHeld> m_vecHeld;
    int m_nClassId;
};

// A create function for metadata: an object of the class with that id.
QnXmlLib16::CSmartPtr<QnXmlLib16::CXmlObjectBase> MakeSheet(int nClassId, const char* pszName);

class CSheet : public QnXmlLib16::CXmlGeneratedClass
{
public:
    explicit CSheet(const CTables& tables, const char* pszName = "r");
    ~CSheet() override;

    using CXmlGeneratedClass::GetBase;
    QnXmlLib16::CXmlObjectBase* GetBase() override { return this; }
    std::string GetTargetNamespace() const override { return m_tables.m_strNamespace; }
    std::string GetNamespace() const override { return m_tables.m_strNamespace; }
    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    QnXmlLib16Data::CParentElementInfo* GetClassInfo() const override;
    QnXmlLib16Data::CElementInfo** GetClassElementInfo() const override;
    QnXmlLib16Data::CAttributeInfo** GetClassAttributeInfo() const override;
    void Init() override;

    // All properties that are set, as "0:text 3:{0:text} 5:[text|text]": values, objects by their
    // own properties or, wildcards, by their XML, and collections by their items.
    std::string Dump() const;

    std::map<int, QnXmlLib16::QnVariant> m_values;           // entries stay where they are
    std::function<void(int nProperty, bool bRead)> m_before; // called before each access

    static int s_nAlive;

private:
    const CTables& m_tables;
};

// A collection of sheets, as a generator emits one for each class.
class CSheetCol : public QnXmlLib16::CXmlCollection
{
public:
    // Null from the function ends the reading of items.
    using Maker = std::function<QnXmlLib16::CSmartPtr<CSheet>(QnXmlLib16::CXmlElement*)>;

    CSheetCol(const char* pszName, int iMin, int iMax, QnXmlLib16::XmlElementType itemType,
              Maker make);

    void Add(CSheet* pItem) { AppendItem(pItem); }
    QnXmlLib16::CNode* begin() const { return GetHeadNode(); }

protected:
    void ToXml_Int(QnXmlLib16::CXmlWriter* pWriter, bool bIsRoot, const char* pszTargetNamespace,
                   const QnXmlLib16::CSerializationContext& context,
                   bool bOptionalChoice) const override;
    QnXmlLib16::CXmlElement* FromXml_Int(QnXmlLib16::CXmlElement* pElement,
                                         QnXmlLib16::CXmlElement* pCursor,
                                         const QnXmlLib16::CSerializationContext& context,
                                         bool bOptionalChoice) override;

private:
    QnXmlLib16::XmlElementType m_itemType;
    Maker m_make;
};

// Texts without facets.
QnXmlLib16::CstringCol* MakeTexts(const char* pszName, int iMin = 0, int iMax = -1);

// Each letter is a setting: a IgnoreUnknownAttributes, c IgnoreInvalidCollectionCounts,
// m IgnoreMissingMandatoryElements, n IgnoreNamespaces, u IgnoreUnknownElements,
// x IgnoreMissingChoice.
QnXmlLib16::CSerializationContext MakeContext(const char* pszFlags);

// "" if the action succeeds, else the chain of what it throws: "Class: message @path", outermost
// first, " < " between them.
std::string Failure(const std::function<void()>& action);

// Reads <r>children</r> into the sheet: its properties, or the failure.
std::string Read(CSheet& sheet, const std::string& strChildren, const char* pszFlags = "");
std::string Read(const CTables& tables, const std::string& strChildren, const char* pszFlags = "");

struct ReadRow
{
    const char* flags;
    std::string children;
    std::string result; // of Read
};

void ExpectReads(const CTables& tables, std::initializer_list<ReadRow> rows);

// The failure of a read that leaves <strName> over in <r>.
std::string LeftOver(const std::string& strName);

// The object as XML text without declaration and line feeds.
std::string ToText(const QnXmlLib16::CXmlObjectBase& object,
                   const QnXmlLib16::CSerializationContext& context = {});

// What is written between <r> and </r>, or the failure.
std::string WriteChildren(const CSheet& sheet, const char* pszFlags = "");

} // namespace Model
