#pragma once

#include <cstddef>
#include <utility>

namespace QnXmlLib16 {

// Holds one counted reference on an object of the library, or null.
// T needs AddRef() and Release(); counts start at 0, so the first holder of a new object keeps
// it alive and the last one to go destroys it. T may be incomplete where a holder is only named.
// Copies of one holder may live on different threads; one holder belongs to one thread.
template <class T>
class CSmartPtr
{
public:
    CSmartPtr() noexcept = default;

    // Takes a reference of its own; null is allowed.
    CSmartPtr(T* pObject) : m_pObject(pObject) { Acquire(); }

    CSmartPtr(const CSmartPtr& other) : m_pObject(other.m_pObject) { Acquire(); }
    CSmartPtr(CSmartPtr&& other) noexcept : m_pObject(std::exchange(other.m_pObject, nullptr)) {}

    // From a holder of a type whose pointer converts to T*.
    template <class U, class = decltype(static_cast<T*>(static_cast<U*>(nullptr)))>
    CSmartPtr(const CSmartPtr<U>& other) : m_pObject(other.GetPtr())
    {
        Acquire();
    }

    ~CSmartPtr() { Reset(); }

    // Safe for self-assignment: the new reference is taken before the old one is given back.
    CSmartPtr& operator=(CSmartPtr other) noexcept
    {
        std::swap(m_pObject, other.m_pObject);
        return *this;
    }

    T* operator->() const noexcept { return m_pObject; }
    T& operator*() const noexcept { return *m_pObject; }
    T* GetPtr() const noexcept { return m_pObject; }
    explicit operator bool() const noexcept { return m_pObject != nullptr; }

    // Gives the reference back and becomes null.
    void Reset()
    {
        if (T* pOld = std::exchange(m_pObject, nullptr))
            pOld->Release();
    }

private:
    void Acquire() const
    {
        if (m_pObject)
            m_pObject->AddRef();
    }

    T* m_pObject = nullptr;
};

template <class T, class U>
bool operator==(const CSmartPtr<T>& a, const CSmartPtr<U>& b) noexcept
{
    return a.GetPtr() == b.GetPtr();
}

template <class T, class U>
bool operator!=(const CSmartPtr<T>& a, const CSmartPtr<U>& b) noexcept
{
    return a.GetPtr() != b.GetPtr();
}

template <class T, class U>
bool operator==(const CSmartPtr<T>& a, U* b) noexcept
{
    return a.GetPtr() == b;
}

template <class T, class U>
bool operator!=(const CSmartPtr<T>& a, U* b) noexcept
{
    return a.GetPtr() != b;
}

template <class T, class U>
bool operator==(U* a, const CSmartPtr<T>& b) noexcept
{
    return a == b.GetPtr();
}

template <class T, class U>
bool operator!=(U* a, const CSmartPtr<T>& b) noexcept
{
    return a != b.GetPtr();
}

template <class T>
bool operator==(const CSmartPtr<T>& a, std::nullptr_t) noexcept
{
    return !a;
}

template <class T>
bool operator!=(const CSmartPtr<T>& a, std::nullptr_t) noexcept
{
    return static_cast<bool>(a);
}

template <class T>
bool operator==(std::nullptr_t, const CSmartPtr<T>& b) noexcept
{
    return !b;
}

template <class T>
bool operator!=(std::nullptr_t, const CSmartPtr<T>& b) noexcept
{
    return static_cast<bool>(b);
}

} // namespace QnXmlLib16
