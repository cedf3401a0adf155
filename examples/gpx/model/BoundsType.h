#pragma once

#include "examples/gpx/model/GpxClass.h"

namespace Gpx {

// boundsType: two pairs of coordinates, in degrees of WGS 84.
class CBoundsType : public CGpxClass
{
public:
    enum Property : int
    {
        Property_Minlat,
        Property_Minlon,
        Property_Maxlat,
        Property_Maxlon
    };

    CBoundsType();
    ~CBoundsType() override;

    const QnXmlLib16::CDecimal& GetMinlat() const { return m_minlat; }
    void SetMinlat(const QnXmlLib16::CDecimal& value) { m_minlat = value; }
    const QnXmlLib16::CDecimal& GetMinlon() const { return m_minlon; }
    void SetMinlon(const QnXmlLib16::CDecimal& value) { m_minlon = value; }
    const QnXmlLib16::CDecimal& GetMaxlat() const { return m_maxlat; }
    void SetMaxlat(const QnXmlLib16::CDecimal& value) { m_maxlat = value; }
    const QnXmlLib16::CDecimal& GetMaxlon() const { return m_maxlon; }
    void SetMaxlon(const QnXmlLib16::CDecimal& value) { m_maxlon = value; }

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    const CMetaData& GetMetaData() const override;

    QnXmlLib16::CDecimal m_minlat;
    QnXmlLib16::CDecimal m_minlon;
    QnXmlLib16::CDecimal m_maxlat;
    QnXmlLib16::CDecimal m_maxlon;
};

} // namespace Gpx
