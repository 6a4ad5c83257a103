// The growable array used for nearly every list: capacity, size and items, growing by the
// larger of what is missing and one eighth of the size clamped to 4..1024.
#pragma once
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace Core {

// The one growth rule of the program: how many slots to add when `missing` more are needed.
inline int GrowthStep(int size, int missing) {
    int eighth = size / 8;
    if (eighth < 4) eighth = 4;
    if (eighth > 1024) eighth = 1024;
    return missing > eighth ? missing : eighth;
}

}  // namespace Core

template <class T>
class TArray {
public:
    TArray() = default;
    TArray(const TArray& other) { Append(other.m_pData, other.m_nSize); }
    TArray(TArray&& other) noexcept
        : m_nCapacity(other.m_nCapacity), m_nSize(other.m_nSize), m_pData(other.m_pData) {
        other.m_nCapacity = other.m_nSize = 0;
        other.m_pData = nullptr;
    }
    TArray& operator=(const TArray& other) {
        if (this != &other) {
            Clear();
            Append(other.m_pData, other.m_nSize);
        }
        return *this;
    }
    TArray& operator=(TArray&& other) noexcept {
        if (this != &other) {
            Free();
            m_nCapacity = other.m_nCapacity;
            m_nSize = other.m_nSize;
            m_pData = other.m_pData;
            other.m_nCapacity = other.m_nSize = 0;
            other.m_pData = nullptr;
        }
        return *this;
    }
    ~TArray() { Free(); }

    int GetSize() const { return m_nSize; }
    int GetCapacity() const { return m_nCapacity; }
    bool IsEmpty() const { return m_nSize == 0; }
    T* GetData() { return m_pData; }
    const T* GetData() const { return m_pData; }
    T& operator[](int i) { return m_pData[i]; }
    const T& operator[](int i) const { return m_pData[i]; }
    T& Last() { return m_pData[m_nSize - 1]; }
    const T& Last() const { return m_pData[m_nSize - 1]; }
    T* begin() { return m_pData; }
    T* end() { return m_pData + m_nSize; }
    const T* begin() const { return m_pData; }
    const T* end() const { return m_pData + m_nSize; }

    void Add(const T& item) {
        if (m_nSize == m_nCapacity) {
            T copy(item);  // the item may live inside this array
            Reserve(m_nSize + 1);
            new (m_pData + m_nSize) T(std::move(copy));
        } else {
            new (m_pData + m_nSize) T(item);
        }
        ++m_nSize;
    }
    void Add(T&& item) {
        if (m_nSize == m_nCapacity) {
            T moved(std::move(item));
            Reserve(m_nSize + 1);
            new (m_pData + m_nSize) T(std::move(moved));
        } else {
            new (m_pData + m_nSize) T(std::move(item));
        }
        ++m_nSize;
    }
    void Append(const T* items, int count) {
        Reserve(m_nSize + count);
        for (int i = 0; i < count; ++i) new (m_pData + m_nSize + i) T(items[i]);
        m_nSize += count;
    }
    void Insert(int index, const T& item) {
        T copy(item);
        Reserve(m_nSize + 1);
        new (m_pData + m_nSize) T();
        for (int i = m_nSize; i > index; --i) m_pData[i] = std::move(m_pData[i - 1]);
        m_pData[index] = std::move(copy);
        ++m_nSize;
    }
    // Removal shifts the tail down.
    void RemoveAt(int index, int count = 1) {
        for (int i = index; i + count < m_nSize; ++i) m_pData[i] = std::move(m_pData[i + count]);
        for (int i = m_nSize - count; i < m_nSize; ++i) m_pData[i].~T();
        m_nSize -= count;
    }
    void RemoveLast() { m_pData[--m_nSize].~T(); }
    // Grows or shrinks the size; new slots are value-initialised.
    void SetSize(int size) {
        if (size > m_nSize) {
            Reserve(size);
            for (int i = m_nSize; i < size; ++i) new (m_pData + i) T();
        } else {
            for (int i = size; i < m_nSize; ++i) m_pData[i].~T();
        }
        m_nSize = size;
    }
    // Never grows, so it stays clear of the allocation path (and of its warnings when inlined).
    void Clear() {
        for (int i = 0; i < m_nSize; ++i) m_pData[i].~T();
        m_nSize = 0;
    }

    // Makes room for `needed` items by the growth rule.
    void Reserve(int needed) {
        if (needed <= m_nCapacity) return;
        int capacity = m_nCapacity + Core::GrowthStep(m_nSize, needed - m_nCapacity);
        Reallocate(capacity);
    }

private:
    void Reallocate(int capacity) {
        if constexpr (std::is_trivially_copyable_v<T>) {
            // realloc can grow a large block in place or by remapping its pages, so the
            // steps of at most 1024 items do not copy a big array again and again.
            void* data = std::realloc(static_cast<void*>(m_pData), sizeof(T) * static_cast<size_t>(capacity));
            if (!data) throw std::bad_alloc();
            m_pData = static_cast<T*>(data);
        } else {
            T* data = static_cast<T*>(std::malloc(sizeof(T) * static_cast<size_t>(capacity)));
            if (!data) throw std::bad_alloc();
            for (int i = 0; i < m_nSize; ++i) {
                new (data + i) T(std::move(m_pData[i]));
                m_pData[i].~T();
            }
            std::free(m_pData);
            m_pData = data;
        }
        m_nCapacity = capacity;
    }
    void Free() {
        for (int i = 0; i < m_nSize; ++i) m_pData[i].~T();
        std::free(m_pData);
        m_pData = nullptr;
        m_nSize = m_nCapacity = 0;
    }

    int m_nCapacity = 0;
    int m_nSize = 0;
    T* m_pData = nullptr;
};
