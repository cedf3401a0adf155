#pragma once

#include "QnXmlLib16/binding/Nillable.h"
#include "examples/common/GeneratedSupport.h"

// A ship, in the form that a generator gives to a schema of this content:
//
//   element ship: type ShipType, attributes id (int, required) and flag, any other is dropped
//       name (string), tons (int, optional, nillable, default 100)
//       group CrewGroup: attribute watch of the ship's element; captain (string), mate (string,
//           optional)
//       log (LogType, nillable): text of type int, attribute by and no other
namespace Model {

inline const char* const kShipNamespace = "urn:ship";

class CShipClass : public GeneratedSupport::CBoundClass
{
public:
    std::string GetTargetNamespace() const override { return kShipNamespace; }
    std::string GetNamespace() const override { return kShipNamespace; }
};

class CLog : public CShipClass, public QnXmlLib16::INillable
{
public:
    CLog();

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;
    bool IsNil() override { return m_bNil; }
    void SetNil(bool bNil) override { m_bNil = bNil; }

    QnXmlLib16::QnVariant m_by;
    QnXmlLib16::QnVariant m_value;

private:
    const CMetaData& GetMetaData() const override;

    bool m_bNil = false;
};

class CCrewGroup : public CShipClass
{
public:
    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

    QnXmlLib16::QnVariant m_watch;
    QnXmlLib16::QnVariant m_captain;
    QnXmlLib16::QnVariant m_mate;

private:
    const CMetaData& GetMetaData() const override;
};

class CShip : public CShipClass
{
public:
    CShip();

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

    // Throws CQnInvalidParamException for an id below 0.
    void SetId(const QnXmlLib16::QnVariant& id);

    QnXmlLib16::QnVariant m_flag;
    QnXmlLib16::QnVariant m_name;
    QnXmlLib16::QnVariant m_tons;
    QnXmlLib16::CSmartPtr<CCrewGroup> m_crew;
    QnXmlLib16::CSmartPtr<CLog> m_log;

private:
    const CMetaData& GetMetaData() const override;

    QnXmlLib16::QnVariant m_id;
};

// A ship with all its members set.
QnXmlLib16::CSmartPtr<CShip> MakeShip();

} // namespace Model
