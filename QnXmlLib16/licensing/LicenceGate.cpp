#include "QnXmlLib16/licensing/LicenceGate.h"

#include <atomic>

namespace QnXmlLib16 {

namespace {

class CBuiltInGate final : public ILicenceGate
{
public:
    void Consult() override {}
    void FirstObject() override {}
    std::string GetHeaderComment() override { return {}; }
};

// Null: the built-in gate is in force.
std::atomic<ILicenceGate*> s_pGate{nullptr};

} // namespace

ILicenceGate::~ILicenceGate() = default;

void CLicenceGate::SetGate(ILicenceGate* pGate) noexcept
{
    s_pGate.store(pGate, std::memory_order_release);
}

ILicenceGate* CLicenceGate::GetGate() noexcept
{
    if (ILicenceGate* const pGate = s_pGate.load(std::memory_order_acquire))
        return pGate;
    // Never destroyed: objects may be made and written while the process shuts down.
    static ILicenceGate* const pBuiltIn = new CBuiltInGate;
    return pBuiltIn;
}

} // namespace QnXmlLib16
