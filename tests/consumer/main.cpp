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
                      crossCast && CatchesAcrossTheBoundary();
    std::printf("%s\n%s\n", text.c_str(), good ? "consumer: good" : "consumer: BAD");
    return good ? 0 : 1;
}
