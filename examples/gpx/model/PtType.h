#pragma once

#include "examples/gpx/model/GpxClass.h"

#include <optional>
#include <utility>

namespace Gpx {

// ptType: a point with height and time, for the use of other schemas.
class CPtType : public CGpxClass
{
public:
    enum Property : int
    {
        Property_Lat,
        Property_Lon,
        Property_Ele,
        Property_Time
    };

    CPtType();
    ~CPtType() override;

    // Degrees, north positive.
    const QnXmlLib16::CDecimal& GetLat() const { return m_lat; }
    void SetLat(const QnXmlLib16::CDecimal& value) { m_lat = value; }
    // Degrees, east positive.
    const QnXmlLib16::CDecimal& GetLon() const { return m_lon; }
    void SetLon(const QnXmlLib16::CDecimal& value) { m_lon = value; }
    // Metres.
    const std::optional<QnXmlLib16::CDecimal>& GetEle() const { return m_ele; }
    void SetEle(std::optional<QnXmlLib16::CDecimal> value) { m_ele = std::move(value); }
    const std::optional<QnXmlLib16::CDateTime>& GetTime() const { return m_time; }
    void SetTime(std::optional<QnXmlLib16::CDateTime> value) { m_time = std::move(value); }

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    const CMetaData& GetMetaData() const override;

    QnXmlLib16::CDecimal m_lat;
    QnXmlLib16::CDecimal m_lon;
    std::optional<QnXmlLib16::CDecimal> m_ele;
    std::optional<QnXmlLib16::CDateTime> m_time;
};

// Points, in their order.
class CPtTypeCol : public GeneratedSupport::CBoundCol
{
public:
    using CBoundCol::CBoundCol;

    // A new item at the end.
    QnXmlLib16::CSmartPtr<CPtType> Add();
    // Shares the item.
    void Add(CPtType* pItem);
    // Counted from 0; throws CQnInvalidParamException beyond the end.
    QnXmlLib16::CSmartPtr<CPtType> Item(int iIndex) const;

protected:
    QnXmlLib16::CSmartPtr<QnXmlLib16::CXmlObjectBase> CreateItem() const override;
};

} // namespace Gpx
