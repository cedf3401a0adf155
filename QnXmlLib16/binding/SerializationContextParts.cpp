#include "QnXmlLib16/binding/SerializationContext.h"

#include "QnXmlLib16/collections/AttributeCol.h"
#include "QnXmlLib16/fastinfoset/FastInfosetContext.h"
#include "QnXmlLib16/json/JsonContext.h"

#include <utility>

namespace QnXmlLib16 {

// The first object that this library constructs, so that static objects of other sources and of
// the application may serialise in their constructors.
__attribute__((init_priority(101))) CSerializationContext CSerializationContext::m_defaultContext;

CSerializationContext::CSerializationContext() = default;

CSerializationContext::CSerializationContext(const CSerializationContext& other)
    : m_pFIContext(other.m_pFIContext ? std::make_unique<CFastInfosetContext>(*other.m_pFIContext)
                                      : nullptr),
      m_pJsonContext(other.m_pJsonContext ? std::make_unique<CJsonContext>(*other.m_pJsonContext)
                                          : nullptr),
      m_settings(other.m_settings)
{}

CSerializationContext& CSerializationContext::operator=(const CSerializationContext& other)
{
    CSerializationContext copy(other);
    m_pFIContext.swap(copy.m_pFIContext);
    m_pJsonContext.swap(copy.m_pJsonContext);
    std::swap(m_settings, copy.m_settings);
    return *this;
}

CSerializationContext::~CSerializationContext() = default;

CFastInfosetContext& CSerializationContext::GetFIContext() const
{
    if (!m_pFIContext)
        m_pFIContext = std::make_unique<CFastInfosetContext>();
    return *m_pFIContext;
}

CJsonContext& CSerializationContext::GetJsonContext() const
{
    if (!m_pJsonContext)
        m_pJsonContext = std::make_unique<CJsonContext>();
    return *m_pJsonContext;
}

CSmartPtr<CAttributeCol> CSerializationContext::GetAdditionalRootAttributes() const
{
    if (!m_settings.m_additionalRootAttributes)
        m_settings.m_additionalRootAttributes =
            CSmartPtr<CAttributeCol>(new CAttributeCol("", "##any", ""));
    return m_settings.m_additionalRootAttributes;
}

} // namespace QnXmlLib16
