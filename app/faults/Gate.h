#pragma once

#include "framework/runtime/SmartPtr.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

class GatedObject;

/// Stands between a module and its host: every host object that the module gets is wrapped, and so
/// is everything that these hand out. Each call of the module through it, queries included, is
/// counted and can be made to fail, and what the module does with references is watched.
///
///     Gate gate;
///     Module module(file, gate.Wrap(host.Components()).Get());
///     gate.Fail(7);          // the eighth call from here on answers E_FAIL
///     ...
///     gate.Misuses();        // what was called or released after it was given back
///
/// It has to outlive the module, and is used on one thread, one at a time. What a failing call
/// would hand out is null; counting references never fails, and neither does what the host calls
/// itself.
class Gate {
public:
    Gate();
    ~Gate();
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;

    /// The object as the module is to see it. Empty for null.
    template <class T>
    SmartPtr<T> Wrap(T* object) {
        return Adopt(static_cast<T*>(WrapAs(IdentifierOf<T>(), object)));
    }
    /// The same for an interface pointer that is known by its identifier, with its one reference,
    /// which the gate takes over; as it is when the gate has no such interface.
    void* WrapAny(const IID& iid, void* object);

    /// Lets the calls from number `first` on fail, counted from 0 and from now; so many of them.
    void Fail(size_t first, size_t failing = SIZE_MAX);
    void FailNothing() { Fail(SIZE_MAX); }
    /// The calls since then.
    size_t Calls() const { return m_Calls; }
    /// Whether one has failed since then.
    bool HasFailed() const { return m_Calls > m_First; }

    /// The component of that name is missing from now on: its creation fails.
    void Withhold(const std::wstring& component) { m_Withheld = component; }
    bool IsWithheld(tagREFString component) const;
    /// Called for the name of every component that is asked for.
    void Notice(std::function<void(tagREFString)> listener) { m_Listener = std::move(listener); }
    void NoticeComponent(tagREFString component) const;

    /// The references that are still held on wrapped objects.
    int32_t References() const { return m_References; }
    /// What was done with objects after their last reference was given back.
    const std::vector<std::string>& Misuses() const { return m_Misuses; }

private:
    friend class GatedObject;

    void* WrapAs(const IID& iid, IUnknown* object);
    GatedObject& ObjectFor(IUnknown* object);
    /// Counts a call; false when it is to fail.
    bool Admit();
    static int32_t Filter(const IID& iid, void** object);

    size_t m_Calls = 0;
    size_t m_First = SIZE_MAX;
    size_t m_Last = SIZE_MAX;
    std::wstring m_Withheld;
    std::function<void(tagREFString)> m_Listener;
    int32_t m_References = 0;
    std::vector<std::string> m_Misuses;
    std::vector<std::unique_ptr<GatedObject>> m_Objects; ///< those given back stay, to be noticed
    std::unordered_map<const void*, GatedObject*> m_Living; ///< by the identity of what they wrap
};
