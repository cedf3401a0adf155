#pragma once

#include "examples/gpx/model/GpxClass.h"
#include "examples/gpx/model/SimpleTypes.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace Gpx {

class CExtensionsType;
class CLinkTypeCol;

// wptType: a point, be it a waypoint, a point of a route or one of a track.
//
// There may be a million of these, and those of a track seldom tell more than place, height, time
// and extensions: all else lies in a record apart, which is made when the first of it is set.
class CWptType : public CGpxClass
{
public:
    enum Property : int
    {
        Property_Ele,
        Property_Time,
        Property_Magvar,
        Property_Geoidheight,
        Property_Name,
        Property_Cmt,
        Property_Desc,
        Property_Src,
        Property_Link,
        Property_Sym,
        Property_Type,
        Property_Fix,
        Property_Sat,
        Property_Hdop,
        Property_Vdop,
        Property_Pdop,
        Property_Ageofdgpsdata,
        Property_Dgpsid,
        Property_Extensions,
        Property_Lat,
        Property_Lon
    };

    CWptType();
    ~CWptType() override;

    // Degrees of WGS 84, north and east positive.
    const QnXmlLib16::CDecimal& GetLat() const { return m_lat; }
    void SetLat(const QnXmlLib16::CDecimal& value) { m_lat = value; }
    const QnXmlLib16::CDecimal& GetLon() const { return m_lon; }
    void SetLon(const QnXmlLib16::CDecimal& value) { m_lon = value; }
    // Metres.
    const std::optional<QnXmlLib16::CDecimal>& GetEle() const { return m_ele; }
    void SetEle(std::optional<QnXmlLib16::CDecimal> value) { m_ele = std::move(value); }
    const std::optional<QnXmlLib16::CDateTime>& GetTime() const { return m_time; }
    void SetTime(std::optional<QnXmlLib16::CDateTime> value) { m_time = std::move(value); }
    // Degrees.
    const std::optional<QnXmlLib16::CDecimal>& GetMagvar() const;
    void SetMagvar(std::optional<QnXmlLib16::CDecimal> value);
    // Metres above the WGS 84 ellipsoid.
    const std::optional<QnXmlLib16::CDecimal>& GetGeoidheight() const;
    void SetGeoidheight(std::optional<QnXmlLib16::CDecimal> value);
    const std::optional<std::string>& GetName() const;
    void SetName(std::optional<std::string> value);
    const std::optional<std::string>& GetCmt() const;
    void SetCmt(std::optional<std::string> value);
    const std::optional<std::string>& GetDesc() const;
    void SetDesc(std::optional<std::string> value);
    const std::optional<std::string>& GetSrc() const;
    void SetSrc(std::optional<std::string> value);
    const std::optional<std::string>& GetSym() const;
    void SetSym(std::optional<std::string> value);
    const std::optional<std::string>& GetType() const;
    void SetType(std::optional<std::string> value);
    const std::optional<FixType>& GetFix() const;
    void SetFix(std::optional<FixType> value);
    const std::optional<QnXmlLib16::CBigInteger>& GetSat() const;
    void SetSat(std::optional<QnXmlLib16::CBigInteger> value);
    // Dilutions of precision: horizontal, vertical, of the position.
    const std::optional<QnXmlLib16::CDecimal>& GetHdop() const;
    void SetHdop(std::optional<QnXmlLib16::CDecimal> value);
    const std::optional<QnXmlLib16::CDecimal>& GetVdop() const;
    void SetVdop(std::optional<QnXmlLib16::CDecimal> value);
    const std::optional<QnXmlLib16::CDecimal>& GetPdop() const;
    void SetPdop(std::optional<QnXmlLib16::CDecimal> value);
    // Seconds.
    const std::optional<QnXmlLib16::CDecimal>& GetAgeofdgpsdata() const;
    void SetAgeofdgpsdata(std::optional<QnXmlLib16::CDecimal> value);
    const std::optional<QnXmlLib16::CBigInteger>& GetDgpsid() const;
    void SetDgpsid(std::optional<QnXmlLib16::CBigInteger> value);

    // Null is none. An object of another element name throws CQnInvalidParamException.
    QnXmlLib16::CSmartPtr<CExtensionsType> GetExtensions() const;
    void SetExtensions(CExtensionsType* pValue);

    // Never null. An empty collection that nobody holds goes, and the next call makes a new one.
    QnXmlLib16::CSmartPtr<CLinkTypeCol> GetLink();
    // Whether there is any link, without making a collection.
    bool HasLink() const { return m_link.Peek() && m_link.Peek()->GetCount() > 0; }

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    friend class CWptTypeCol;

    struct CDetails
    {
        std::optional<QnXmlLib16::CDecimal> m_magvar;
        std::optional<QnXmlLib16::CDecimal> m_geoidheight;
        std::optional<std::string> m_name;
        std::optional<std::string> m_cmt;
        std::optional<std::string> m_desc;
        std::optional<std::string> m_src;
        std::optional<std::string> m_sym;
        std::optional<std::string> m_type;
        std::optional<FixType> m_fix;
        std::optional<QnXmlLib16::CBigInteger> m_sat;
        std::optional<QnXmlLib16::CDecimal> m_hdop;
        std::optional<QnXmlLib16::CDecimal> m_vdop;
        std::optional<QnXmlLib16::CDecimal> m_pdop;
        std::optional<QnXmlLib16::CDecimal> m_ageofdgpsdata;
        std::optional<QnXmlLib16::CBigInteger> m_dgpsid;
    };

    const CMetaData& GetMetaData() const override;

    template <class T>
    const std::optional<T>& GetDetail(std::optional<T> CDetails::*pMember) const;
    template <class T>
    void SetDetail(std::optional<T> CDetails::*pMember, std::optional<T> value);
    // AccessProperty for the members of CDetails.
    void AccessDetail(int nProperty, bool bRead, QnXmlLib16::QnVariant& value);

    QnXmlLib16::CDecimal m_lat;
    QnXmlLib16::CDecimal m_lon;
    std::optional<QnXmlLib16::CDecimal> m_ele;
    std::optional<QnXmlLib16::CDateTime> m_time;
    QnXmlLib16::CSmartPtr<CExtensionsType> m_pExtensions;
    GeneratedSupport::CColHolder m_link;
    std::unique_ptr<CDetails> m_pDetails; // null while none of it is set
};

// Points, in their order.
class CWptTypeCol : public GeneratedSupport::CBoundCol
{
public:
    using CBoundCol::CBoundCol;

    // A new item at the end.
    QnXmlLib16::CSmartPtr<CWptType> Add();
    // Shares the item.
    void Add(CWptType* pItem);
    // Counted from 0; throws CQnInvalidParamException beyond the end.
    QnXmlLib16::CSmartPtr<CWptType> Item(int iIndex) const;

protected:
    QnXmlLib16::CSmartPtr<QnXmlLib16::CXmlObjectBase> CreateItem() const override;
    void Prepare(QnXmlLib16::CXmlObjectBase* pItem) const override;

private:
    mutable GeneratedSupport::CColLender m_links; // holds one during a run through the items
};

} // namespace Gpx
