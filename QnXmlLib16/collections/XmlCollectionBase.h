#pragma once

#include "QnXmlLib16/binding/XmlObjectBase.h"

#include <string>
#include <vector>

namespace QnXmlLib16 {

// What all collections have in common: the name and namespace of their items, the bounds on
// their number, and listeners.
//
// The bounds are looked at by ValidateCount() and IsValidCount() only: adding and reading never
// are, so an item too many is stored and found later.
//
// Listeners are neither counted nor owned; a listener removes itself before it dies. They are
// called on the thread that changes the collection, in order of registration, and must not add
// or remove listeners meanwhile.
class QNXML_API CXmlCollectionBase : public CXmlObjectBase
{
public:
    // Empty name and namespace, any number of items.
    CXmlCollectionBase();

    // iMaxOccurs -1 is unbounded; any other negative maximum is exceeded by every collection.
    CXmlCollectionBase(const char* pszElementName, const char* pszNamespace, int iMinOccurs,
                       int iMaxOccurs);

    ~CXmlCollectionBase() override;

    using CXmlObjectBase::GetBase;
    CXmlObjectBase* GetBase() override;

    // Throws CQnException: a collection has no element of its own.
    std::string GetTargetNamespace() const override;

    // The namespace of the items.
    std::string GetNamespace() const override;

    // The lower bound on the number of items.
    int GetMinOccurs() const noexcept { return m_iMinOccurs; }

    virtual int GetCount() const = 0;

    // Removes one item after the other, each with the events of its own.
    virtual void Clear() = 0;

    // Removes the item at that place, counted from 0.
    virtual void Remove(int iIndex) = 0;

    // Throws CQnValidationException with the bound that GetCount() breaks; the maximum is tested
    // first. A context that ignores invalid counts lets everything pass.
    virtual void ValidateCount(const CSerializationContext& context) const;

    // The same question without a failure.
    virtual bool IsValidCount(const CSerializationContext& context) const;

    // A sink added twice hears each event twice.
    void AddEventListener(IEventSink* pListener);

    // Removes every entry of that sink; an unknown one is no error.
    void RemoveEventListener(IEventSink* pListener);

    // Each tells all listeners, see IEventSink::MsgType. pItem points to the value or is the
    // item; an index of -1 reaches the listeners as a null pointer.
    void FireOnCollectionChange();
    void FireOnCollectionAdd(void* pItem);
    void FireOnCollectionAddComplete(void* pItem);
    void FireOnCollectionRemove(int iIndex);
    void FireOnCollectionRemoveComplete(int iIndex);

protected:
    std::string m_strNamespace;
    std::vector<IEventSink*> m_vecEventListeners;
    int m_iMinOccurs = 0;
    int m_iMaxOccurs = -1;
};

} // namespace QnXmlLib16
