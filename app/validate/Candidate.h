#pragma once

#include "app/validate/Stage.h"
#include "framework/Interfaces.h"
#include "framework/settings/ParameterTable.h"

#include <vector>

/// An object of the component for a check that is not about counting: it has references to spare,
/// so that a count that is wrong is found by the check that looks for it.
class Candidate {
public:
    /// Throws ModuleError when it cannot be made.
    explicit Candidate(const Stage& stage) : Candidate(stage.CreateOrThrow()) {}
    /// Takes over an object that was just made.
    explicit Candidate(SmartPtr<IUnknown> object);
    /// Gives back whatever is left.
    ~Candidate();
    Candidate(const Candidate&) = delete;
    Candidate& operator=(const Candidate&) = delete;

    IUnknown* Get() const { return m_Object; }
    /// Borrowed; null when the component has no such interface.
    template <class T>
    T* As() const {
        return static_cast<T*>(Find(IdentifierOf<T>()));
    }
    /// The same, or the check does not apply.
    template <class T>
    T* Need(Trial& trial, const char* name) const {
        T* found = As<T>();
        if (!found) {
            trial.Skip(std::string("the component has no ") + name);
        }
        return found;
    }

private:
    void* Find(const IID& iid) const;

    IUnknown* m_Object;
};

/// A numbered parameter, as its object answers for it.
struct Parameter {
    int32_t m_Number;
    int32_t m_Flags;
    int32_t m_Min; ///< without a range both are 0
    int32_t m_Max;

    bool IsNumber() const;
    bool IsWhole() const; ///< a number that is no floating-point one
    bool IsObject() const;
    bool HasRange() const { return m_Min < m_Max; }
    bool IsPersistent() const;
    /// Another value that the parameter has to take.
    int32_t Other(int32_t value) const;
};

/// The parameters of the object's table, in the order of their numbers. At most so many numbers are
/// tried.
std::vector<Parameter> ParametersOf(IUIPropInterrogate* object);

/// The values of the numbers among them.
std::vector<int32_t> ValuesOf(IUIPropInterrogate* object, const std::vector<Parameter>& all);
