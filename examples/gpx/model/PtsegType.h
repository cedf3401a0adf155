#pragma once

#include "examples/gpx/model/GpxClass.h"

namespace Gpx {

class CPtTypeCol;

// ptsegType: a polygon or a line, for the use of other schemas.
class CPtsegType : public CGpxClass
{
public:
    enum Property : int
    {
        Property_Pt
    };

    CPtsegType();
    ~CPtsegType() override;

    // Never null, and the same one for the life of this object.
    QnXmlLib16::CSmartPtr<CPtTypeCol> GetPt() const;

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    const CMetaData& GetMetaData() const override;

    const QnXmlLib16::CSmartPtr<CPtTypeCol> m_pPt;
};

} // namespace Gpx
