#include "QnXmlLib16/binding/XmlGeneratedClass.h"

namespace QnXmlLib16 {

// Ready before the static objects of other sources, which may build their tables at once.
__attribute__((init_priority(101))) CQNCriticalSection CXmlGeneratedClass::m_csInit;

CXmlGeneratedClass::CXmlGeneratedClass() = default;
CXmlGeneratedClass::~CXmlGeneratedClass() = default;

void CXmlGeneratedClass::ReadProperty(int nProperty, QnVariant& value) const
{
    const_cast<CXmlGeneratedClass*>(this)->AccessProperty(nProperty, true, value);
}

} // namespace QnXmlLib16
