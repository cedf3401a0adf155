#pragma once

#include "QnXmlLib16/binding/Nillable.h"
#include "QnXmlLib16/binding/XmlGeneratedClass.h"
#include "QnXmlLib16/values/QnVariant.h"

#include <string>

// A ship, in the form that a generator gives to a schema of this content:
//
//   element ship: type ShipType, attributes id (int, required) and flag, any other is dropped
//       name (string), tons (int, optional, nillable, default 100)
//       group CrewGroup: attribute watch of the ship's element; captain (string), mate (string, optional)
//       log (LogType, nillable): text of type int, attribute by and no other
namespace Model {

inline const char* const kShipNamespace = "urn:ship";

class CLog : public QnXmlLib16::CXmlGeneratedClass, public QnXmlLib16::INillable
{
public:
    enum Property : int
    {
        Property_By,
        Property_Value
    };

    CLog();
    ~CLog() override;

    using CXmlGeneratedClass::GetBase;
    QnXmlLib16::CXmlObjectBase* GetBase() override;
    std::string GetTargetNamespace() const override;
    std::string GetNamespace() const override;
    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    QnXmlLib16Data::CParentElementInfo* GetClassInfo() const override;
    QnXmlLib16Data::CElementInfo** GetClassElementInfo() const override;
    QnXmlLib16Data::CAttributeInfo** GetClassAttributeInfo() const override;
    void Init() override;

    bool IsNil() override;
    void SetNil(bool bNil) override;

    QnXmlLib16::QnVariant m_by;
    QnXmlLib16::QnVariant m_value;

private:
    struct MetaData;
    static const MetaData& GetMetaData();

    bool m_bNil = false;
};

class CCrewGroup : public QnXmlLib16::CXmlGeneratedClass
{
public:
    enum Property : int
    {
        Property_Watch,
        Property_Captain,
        Property_Mate
    };

    CCrewGroup();
    ~CCrewGroup() override;

    using CXmlGeneratedClass::GetBase;
    QnXmlLib16::CXmlObjectBase* GetBase() override;
    std::string GetTargetNamespace() const override;
    std::string GetNamespace() const override;
    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    QnXmlLib16Data::CParentElementInfo* GetClassInfo() const override;
    QnXmlLib16Data::CElementInfo** GetClassElementInfo() const override;
    QnXmlLib16Data::CAttributeInfo** GetClassAttributeInfo() const override;
    void Init() override;

    QnXmlLib16::QnVariant m_watch;
    QnXmlLib16::QnVariant m_captain;
    QnXmlLib16::QnVariant m_mate;

private:
    struct MetaData;
    static const MetaData& GetMetaData();
};

class CShip : public QnXmlLib16::CXmlGeneratedClass
{
public:
    enum Property : int
    {
        Property_Id,
        Property_Flag,
        Property_Name,
        Property_Tons,
        Property_Crew,
        Property_Log
    };

    CShip();
    ~CShip() override;

    using CXmlGeneratedClass::GetBase;
    QnXmlLib16::CXmlObjectBase* GetBase() override;
    std::string GetTargetNamespace() const override;
    std::string GetNamespace() const override;
    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    QnXmlLib16Data::CParentElementInfo* GetClassInfo() const override;
    QnXmlLib16Data::CElementInfo** GetClassElementInfo() const override;
    QnXmlLib16Data::CAttributeInfo** GetClassAttributeInfo() const override;
    void Init() override;

    // Throws CQnInvalidParamException for an id below 0.
    void SetId(const QnXmlLib16::QnVariant& id);

    QnXmlLib16::QnVariant m_flag;
    QnXmlLib16::QnVariant m_name;
    QnXmlLib16::QnVariant m_tons;
    QnXmlLib16::CSmartPtr<CCrewGroup> m_crew;
    QnXmlLib16::CSmartPtr<CLog> m_log;

private:
    struct MetaData;
    static const MetaData& GetMetaData();

    QnXmlLib16::QnVariant m_id;
};

// A ship with all its members set.
QnXmlLib16::CSmartPtr<CShip> MakeShip();

} // namespace Model
