#pragma once

#include "Sheet.h"

#include "QnXmlLib16/binding/Nillable.h"

// A ship, with the tables that a schema of this content gives:
//
//   element ship: type ShipType, attributes id (int, not below 0, required) and flag, any other is
//       dropped
//       name (string), tons (int, optional, nillable, default 100)
//       group CrewGroup: attribute watch of the ship's element; captain (string), mate (string,
//           optional)
//       log (LogType, nillable): text of type int, attribute by and no other
namespace Model {

inline const char* const kShipNamespace = "urn:ship";

class CLog : public CSheet, public QnXmlLib16::INillable
{
public:
    CLog();

    void Init() override;
    bool IsNil() override { return m_bNil; }
    void SetNil(bool bNil) override { m_bNil = bNil; }

    QnXmlLib16::QnVariant& m_by = m_values[0];
    QnXmlLib16::QnVariant& m_value = m_values[1];

private:
    bool m_bNil = false;
};

class CCrewGroup : public CSheet
{
public:
    CCrewGroup();

    QnXmlLib16::QnVariant& m_watch = m_values[0];
    QnXmlLib16::QnVariant& m_captain = m_values[1];
    QnXmlLib16::QnVariant& m_mate = m_values[2];
};

// The object that a property holds.
template <class TChild>
struct CChild
{
    TChild* operator->() const { return static_cast<TChild*>(m_value.PeekXmlObject()); }

    QnXmlLib16::QnVariant& m_value;
};

class CShip : public CSheet
{
public:
    CShip();

    // Throws CQnInvalidParamException for an id below 0.
    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;

    QnXmlLib16::QnVariant& m_id = m_values[0];
    QnXmlLib16::QnVariant& m_flag = m_values[1];
    QnXmlLib16::QnVariant& m_name = m_values[2];
    QnXmlLib16::QnVariant& m_tons = m_values[3];
    const CChild<CCrewGroup> m_crew{m_values[4]};
    const CChild<CLog> m_log{m_values[5]};
};

// A ship with all its members set.
QnXmlLib16::CSmartPtr<CShip> MakeShip();

} // namespace Model
