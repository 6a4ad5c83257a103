// The intrusively counted root of all long-lived objects and its holder.
// The count starts at 0: whoever first takes the pointer into a TRefPtr owns it.
#pragma once
#include "core/SmallBlocks.h"

class CRefObject {
public:
    // Counted objects come and go at every evaluation step; small ones reuse freed blocks.
    static void* operator new(size_t size) { return Core::CSmallBlocks::Allocate(size); }
    static void operator delete(void* memory, size_t size) { Core::CSmallBlocks::Free(memory, size); }

    CRefObject() = default;
    CRefObject(const CRefObject&) : m_nRefCount(0) {}
    CRefObject& operator=(const CRefObject&) { return *this; }
    virtual ~CRefObject() = default;

    void AddRef() { ++m_nRefCount; }
    // Deletes the object when no holder is left.
    void Release() {
        if (--m_nRefCount < 1) delete this;
    }
    int GetRefCount() const { return m_nRefCount; }

private:
    int m_nRefCount = 0;
};

template <class T>
class TRefPtr {
public:
    TRefPtr() = default;
    TRefPtr(T* p) : m_p(p) {
        if (m_p) m_p->AddRef();
    }
    TRefPtr(const TRefPtr& other) : TRefPtr(other.m_p) {}
    TRefPtr(TRefPtr&& other) noexcept : m_p(other.m_p) { other.m_p = nullptr; }
    template <class U>
    TRefPtr(const TRefPtr<U>& other) : TRefPtr(other.Get()) {}
    ~TRefPtr() {
        if (m_p) m_p->Release();
    }

    // The new object is counted before the old one is released, so self-assignment is harmless.
    TRefPtr& operator=(T* p) {
        if (p) p->AddRef();
        T* old = m_p;
        m_p = p;
        if (old) old->Release();
        return *this;
    }
    TRefPtr& operator=(const TRefPtr& other) { return *this = other.m_p; }
    TRefPtr& operator=(TRefPtr&& other) noexcept {
        if (this != &other) {
            T* old = m_p;
            m_p = other.m_p;
            other.m_p = nullptr;
            if (old) old->Release();
        }
        return *this;
    }

    T* Get() const { return m_p; }
    T* operator->() const { return m_p; }
    T& operator*() const { return *m_p; }
    operator T*() const { return m_p; }
    explicit operator bool() const { return m_p != nullptr; }

private:
    T* m_p = nullptr;
};
