#pragma once

#include <memory>
#include <utility>

template <class Signature>
class Once;

/// A function that is called once, since it hands on what it holds. So it is moved, and never
/// copied:
///
///     SourceMaker make = ReadSource(path, kind, nullptr);
///     auto tree = std::move(make)(helpers);
template <class Result, class... Arguments>
class Once<Result(Arguments...)> {
public:
    /// Holds no function, and must not be called.
    Once() = default;
    /// Throws std::bad_alloc.
    template <class Function>
    explicit Once(Function function)
        : m_Call(std::make_unique<CallOf<Function>>(std::move(function))) {}

    Result operator()(Arguments... arguments) && {
        const auto call = std::move(m_Call);
        return call->Make(std::forward<Arguments>(arguments)...);
    }

private:
    struct Call {
        virtual ~Call() = default;
        virtual Result Make(Arguments... arguments) = 0;
    };
    template <class Function>
    struct CallOf final : Call {
        explicit CallOf(Function function) : m_Function(std::move(function)) {}
        Result Make(Arguments... arguments) override {
            return std::move(m_Function)(std::forward<Arguments>(arguments)...);
        }

        Function m_Function;
    };

    std::unique_ptr<Call> m_Call;
};
