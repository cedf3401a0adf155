// Linked against the installed library alone: derives, catches and casts across its boundary.
#include "QnXmlLib16/QnXmlLib16.h"

#include <cstdio>
#include <cstring>

using namespace QnXmlLib16;

namespace {

// A listener of an application: derived from an exported class, called from inside the library.
class CAddCounter : public CElement
{
public:
    CAddCounter() : CElement("listener") {}
    void OnEvent(CXmlObjectBase*, MsgType message, void*) override
    {
        if (message == MsgType_AddComplete)
            ++m_iAdded;
    }
    int m_iAdded = 0;
};

bool CatchesAcrossTheBoundary()
{
    try {
        CElement("broken").FromXml("<a><b></a>");
    }
    catch (const CQnValidationException&) {
        return false;
    }
    catch (const CQnException& e) {
        return e.GetMessage().find("at line 1") != std::string::npos;
    }
    return false;
}

// Works before main, as the tables of generated code do when a static object of the application
// binds a document: whatever the library keeps for itself must be in place by then.
class CEarlyUser
{
public:
    CEarlyUser()
    {
        try {
            const CDecimal sum = CDecimal("0.1") + CDecimal(2);
            const bool sums =
                sum.ToString() == "2.1" && CBigInteger::MAX_LONG.ToString() == "2147483647";
            m_bGood = sums && Checks() && Binds();
        }
        catch (const CQnException& e) {
            std::printf("%s\n", e.GetFullMessage().c_str());
        }
    }
    bool m_bGood = false;

private:
    static bool Checks()
    {
        const CPrimitiveRestrictions price("", -1, -1, "", "", "0", "100", -1, 5, 2);
        QnVariant value;
        value.SetDecimal(CDecimal("99.99"));
        CXmlObjectHelper::CheckRestriction("price", value, it_decimal, price);
        value.SetDecimal(CDecimal("100"));
        try {
            CXmlObjectHelper::CheckRestriction("price", value, it_decimal, price);
        }
        catch (const CQnException&) {
            const CPrimitiveRestrictions code("[A-Z]{2}", -1, -1, "", "", "", "", -1, -1, -1);
            CXmlObjectHelper::CheckRestrictionForstring("code", "AB", code);
            return true;
        }
        return false;
    }

    static bool Binds()
    {
        const CSmartPtr<CElement> root = new CElement("");
        root->FromXml("<r xmlns='urn:e' a='1'><c>x</c></r>");
        return root->ToXml(false, false, EOLType_LF, CSerializationContext::m_defaultContext) ==
               "<AA:r xmlns:AA=\"urn:e\" a=\"1\"><AA:c>x</AA:c></AA:r>";
    }
};
const CEarlyUser g_earlyUser;

} // namespace

int main()
{
    CSmartPtr<CElement> root = new CElement("order");
    CSmartPtr<CAddCounter> listener = new CAddCounter;
    root->GetElements()->AddEventListener(listener.GetPtr());
    root->GetElements()->Add("item", "")->SetText("2 < 3");
    root->GetElements()->RemoveEventListener(listener.GetPtr());

    const std::string text =
        root->ToXml(false, false, EOLType_LF, CSerializationContext::m_defaultContext);
    const bool crossCast = dynamic_cast<IEventSink*>(root.GetPtr()) != nullptr;
    const bool good = text == "<order><item>2 &lt; 3</item></order>" && listener->m_iAdded == 1 &&
                      crossCast && CatchesAcrossTheBoundary() && g_earlyUser.m_bGood;
    std::printf("%s\n%s\n", text.c_str(), good ? "consumer: good" : "consumer: BAD");
    return good ? 0 : 1;
}
