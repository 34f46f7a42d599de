#pragma once

#include "framework/runtime/SmartPtr.h"

#include <atomic>
#include <new>

/// The part of every component class that does not depend on the class: its primary interface
/// table and the reference count.
class ObjectBase : public IUnknown {
public:
    int32_t QueryInterface(const IID& iid, void** object) override;
    // AddRef and Release are supplied by the component class.

    /// Runs once, after construction; anything but S_OK fails the creation.
    virtual int32_t FinalConstruct() { return S_OK; }
    /// Runs once, before destruction.
    virtual void FinalRelease() {}
    /// The object lock. It does not nest: see CResourceLock.
    virtual void Lock() {}
    virtual void Unlock() {}

protected:
    ~ObjectBase() = default;

    int32_t IncrementCount() { return m_RefCount.fetch_add(1) + 1; }
    int32_t DecrementCount() { return m_RefCount.fetch_sub(1) - 1; }
    /// To be called when the count has reached 0, before the object is torn down: an object that is
    /// released on the way may add and drop a reference to this one without destroying it again.
    void HoldCountWhileDying() { m_RefCount.store(kDyingCount); }

private:
    static constexpr int32_t kDyingCount = 0x40000000;

    std::atomic<int32_t> m_RefCount{1};
};
static_assert(sizeof(std::atomic<int32_t>) == sizeof(int32_t));

/// Creator function of a component: (outer, iid, object) -> status. Aggregation is not supported.
using CreatorFunction = int32_t (*)(void* outer, IID* iid, void** object);

/// The steps of a creation that every class shares: FinalConstruct, the query for `iid`, and the
/// drop of the construction reference. On any status but S_OK the object still holds that reference
/// and the caller destroys it.
int32_t CompleteCreation(ObjectBase& object, const IID& iid, void** result);

/// Base of a component class T, which befriends it so that creation can destroy what failed.
template <class T>
class CObject : public ObjectBase {
public:
    /// The module's creator: a new T asked for `iid`, with one reference in `object`. On failure
    /// `object` is null and nothing of the new object survives; `Release` is not called on it then.
    static int32_t _CreateInstance(void* /*outer*/, IID* iid, void** object) {
        if (!iid || !object) {
            return E_POINTER;
        }
        *object = nullptr;
        T* created = new (std::nothrow) T;
        if (!created) {
            return E_FAIL;
        }
        const int32_t status = CompleteCreation(*created, *iid, object);
        if (status != S_OK) {
            created->FinalRelease();
            delete created;
        }
        return status;
    }
};

/// Holds an object's lock for a scope.
class ObjectGuard {
public:
    explicit ObjectGuard(ObjectBase& object) : m_Object(object) { m_Object.Lock(); }
    ~ObjectGuard() { m_Object.Unlock(); }
    ObjectGuard(const ObjectGuard&) = delete;
    ObjectGuard& operator=(const ObjectGuard&) = delete;

private:
    ObjectBase& m_Object;
};
