#pragma once

#include "examples/gpx/model/GpxClass.h"

namespace Gpx {

class CExtensionsType;
class CWptTypeCol;

// trksegType: points that were recorded without a break.
class CTrksegType : public CGpxClass
{
public:
    enum Property : int
    {
        Property_Trkpt,
        Property_Extensions
    };

    CTrksegType();
    ~CTrksegType() override;

    // Null is none. An object of another element name throws CQnInvalidParamException.
    QnXmlLib16::CSmartPtr<CExtensionsType> GetExtensions() const;
    void SetExtensions(CExtensionsType* pValue);

    // Never null, and the same one for the life of this object.
    QnXmlLib16::CSmartPtr<CWptTypeCol> GetTrkpt() const;

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    const CMetaData& GetMetaData() const override;

    const QnXmlLib16::CSmartPtr<CWptTypeCol> m_pTrkpt;
    QnXmlLib16::CSmartPtr<CExtensionsType> m_pExtensions;
};

// Segments of a track.
class CTrksegTypeCol : public GeneratedSupport::CBoundCol
{
public:
    using CBoundCol::CBoundCol;

    // A new item at the end.
    QnXmlLib16::CSmartPtr<CTrksegType> Add();
    // Shares the item.
    void Add(CTrksegType* pItem);
    // Counted from 0; throws CQnInvalidParamException beyond the end.
    QnXmlLib16::CSmartPtr<CTrksegType> Item(int iIndex) const;

protected:
    QnXmlLib16::CSmartPtr<QnXmlLib16::CXmlObjectBase> CreateItem() const override;
};

} // namespace Gpx
