// The programming model in one page: fill bound objects, write them, read them back, and see what
// the library says to objects and documents that break their schema.
#include "examples/common/Output.h"
#include "examples/order/Order.h"

#include <cstdio>

using namespace QnXmlLib16;
using namespace Orders;

namespace {

// Hears of every note that comes and goes.
class CNoteListener : public IEventSink
{
public:
    void OnEvent(CXmlObjectBase* /*pSender*/, MsgType message, void* pData) override
    {
        if (message == MsgType_AddComplete)
            std::printf("note added: %s\n", static_cast<const std::string*>(pData)->c_str());
        else if (message == MsgType_Remove)
            std::printf("note %d removed\n", *static_cast<const int*>(pData));
    }
    CXmlObjectBase* GetBase() override { return nullptr; } // it stands for no bound object
};

// New objects count 0 references: the first holder keeps them alive.
CSmartPtr<COrder> MakeOrder()
{
    CSmartPtr<COrder> pOrder = new COrder;
    pOrder->SetNumber(1001);
    pOrder->GetShipTo()->SetStreet("Herengracht 1"); // an all group: order does not matter
    pOrder->GetShipTo()->SetCity("Amsterdam");

    CSmartPtr<CAccount> pCard = new CAccount("card"); // a choice: card or transfer
    pCard->SetNumber("4000 0000 0000 0002");
    pOrder->GetPayment()->SetCard(pCard.GetPtr());

    CSmartPtr<CParcel> pParcel = new CParcel; // an abstract member: written with its xsi:type
    pParcel->SetWeight(CDecimal("1.25"));
    pOrder->SetDelivery(pParcel.GetPtr());

    CSmartPtr<CLine> pLine = pOrder->GetLine()->Add();
    pLine->SetSku("QX-17");
    pLine->SetQuantity(3);
    pLine->SetPrice(CDecimal("19.95"));
    return pOrder;
}

// Runs an action that must fail and prints what the library says: the whole chain, outermost first.
template <class TAction>
void ShowFault(const char* pszWhat, const TAction& action)
{
    try {
        action();
    }
    catch (const CQnException& e) {
        std::printf("\n%s:\n%s\n", pszWhat, e.GetFullMessage().c_str());
        return;
    }
    throw CQnException(std::string("no fault where one is due: ") + pszWhat);
}

int Run(int, char**)
{
    CSerializationContext context;
    context.SetDefaultNamespaceURI(kNamespace);
    context.GetNamespaceAliases().Add("xsi", "http://www.w3.org/2001/XMLSchema-instance");

    CSmartPtr<COrder> pOrder = MakeOrder();
    CNoteListener listener;
    pOrder->GetNote()->AddEventListener(&listener);
    pOrder->GetNote()->Add("ring twice");
    pOrder->GetNote()->Add("not before ten");
    pOrder->GetNote()->Remove(0);
    pOrder->GetNote()->RemoveEventListener(&listener); // it must not outlive its registration

    const std::string strXml = pOrder->ToXml(true, true, EOLType_LF, context);
    std::printf("\n%s\n", strXml.c_str());

    CSmartPtr<COrder> pCopy = new COrder;
    pCopy->FromXml(strXml.c_str(), context);
    std::printf("read back: order %ld, paid by %s, %s, %s, %d line(s), the first one of %s\n",
                pCopy->GetNumber(), pCopy->GetPayment()->GetSelected().c_str(),
                dynamic_cast<CParcel*>(pCopy->GetDelivery().GetPtr()) ? "a parcel" : "no parcel",
                pCopy->GetDeliverBy() ? pCopy->GetDeliverBy()->ToString().c_str() : "on no date",
                pCopy->GetLine()->GetCount(), pCopy->GetLine()->Item(0)->GetSku().c_str());
    if (pCopy->ToXml(true, true, EOLType_LF, context) != strXml)
        throw CQnException("the copy differs from the order");

    ShowFault("A second member of a choice", [&] {
        const CSmartPtr<CAccount> pTransfer = new CAccount("transfer");
        pOrder->GetPayment()->SetTransfer(pTransfer.GetPtr());
    });
    ShowFault("A value outside its facets, on writing", [&] {
        pOrder->GetLine()->Item(0)->SetQuantity(0);
        pOrder->ToXml(true, true, EOLType_LF, context);
    });
    ShowFault("A note that is too long", [&] { pOrder->GetNote()->Add(std::string(41, 'x')); });
    ShowFault("An order without lines", [&] {
        pOrder->GetLine()->Clear();
        pOrder->ToXml(true, true, EOLType_LF, context);
    });
    ShowFault("A document with a bad value", [&] {
        std::string strBad = strXml;
        strBad.replace(strBad.find("19.95"), 5, "a lot");
        pCopy->FromXml(strBad.c_str(), context);
    });
    return examples::kExitGood;
}

} // namespace

int main(int argc, char** argv)
{
    return examples::RunProgram("qnxmlorder", Run, argc, argv);
}
