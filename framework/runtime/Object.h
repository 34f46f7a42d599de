#pragma once

#include "framework/runtime/RefCount.h"
#include "framework/runtime/SmartPtr.h"

#include <new>

/// The part of every component class that does not depend on the class: its primary interface
/// table and the reference count.
class ObjectBase : public IUnknown {
public:
    int32_t QueryInterface(const IID& iid, void** object) override;
    // AddRef and Release are supplied by the component class, on m_RefCount.

    /// Runs once, after construction; anything but S_OK fails the creation.
    virtual int32_t FinalConstruct() { return S_OK; }
    /// Runs once, before destruction.
    virtual void FinalRelease() {}
    /// The object lock. It does not nest: see CResourceLock.
    virtual void Lock() {}
    virtual void Unlock() {}

protected:
    ~ObjectBase() = default;

    RefCount m_RefCount;
};

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
