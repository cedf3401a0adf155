#pragma once

#include "examples/gpx/model/GpxClass.h"

#include <string>
#include <utility>

namespace Gpx {

// emailType: an email address in two halves, which keeps it from being harvested.
class CEmailType : public CGpxClass
{
public:
    enum Property : int
    {
        Property_Id,
        Property_Domain
    };

    CEmailType();
    ~CEmailType() override;

    // The half in front of the at sign.
    const std::string& GetId() const { return m_strId; }
    void SetId(std::string value) { m_strId = std::move(value); }
    // The half behind it.
    const std::string& GetDomain() const { return m_strDomain; }
    void SetDomain(std::string value) { m_strDomain = std::move(value); }

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    const CMetaData& GetMetaData() const override;

    std::string m_strId;
    std::string m_strDomain;
};

} // namespace Gpx
