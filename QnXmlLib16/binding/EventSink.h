#pragma once

#include "QnXmlLib16/support/Export.h"

namespace QnXmlLib16 {

class CXmlObjectBase;

// Hears what happens to a collection that it is registered with. Every bound object is a sink;
// one that does not override OnEvent is not called at all.
// A sink is neither counted nor owned by the collection: it removes itself before it dies, and
// neither adds nor removes sinks while it is being called.
class QNXML_API IEventSink
{
public:
    // The add messages carry the item or value as data. The remove messages carry a pointer to
    // the int index of the item, or null where the collection does not tell the index; the
    // pointer is valid during the call only.
    enum MsgType : int
    {
        MsgType_CollectionChanged = 0, // data is null
        MsgType_Add = 1,               // about to be added
        MsgType_AddComplete = 2,
        MsgType_Remove = 3, // about to be removed
        MsgType_RemoveComplete = 4
    };

    // pSender is the collection's base. Called on the thread that changes the collection, in the
    // middle of the change; what it throws ends that change and reaches the changer.
    virtual void OnEvent(CXmlObjectBase* pSender, MsgType message, void* pData) = 0;

    // The object behind the sink.
    virtual CXmlObjectBase* GetBase() = 0;

protected:
    IEventSink() = default;
    IEventSink(const IEventSink&) = default;
    IEventSink& operator=(const IEventSink&) = default;
    // A sink is never destroyed through this interface.
    ~IEventSink() = default;
};

} // namespace QnXmlLib16
