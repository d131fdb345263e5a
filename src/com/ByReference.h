#pragma once

#include "com/CollectionObject.h"
#include "com/arguments.h"

#include <memory>
#include <string>

namespace z7::com {

/// What the library holds of an argument by reference.
[[nodiscard]] inline std::string held(BSTR argument) { return text(argument); }
[[nodiscard]] inline bool held(VARIANT_BOOL argument) noexcept { return truth(argument); }
[[nodiscard]] std::shared_ptr<cashflow::CashFlowCollection> held(_CashFlowCollection* argument);

/// Replaces what an argument by reference has by a value of the library, and frees what it had.
void replace(BSTR* argument, const std::string& text);
void replace(VARIANT_BOOL* argument, bool truth) noexcept;
void replace(_CashFlowCollection** argument, const std::shared_ptr<cashflow::CashFlowCollection>& rows);

/// An argument by reference that may be missing: a variable of the host, as the pointer to a value that the library
/// takes.
template <class Passed, class Held> class ByReference {
public:
    /// The argument of a member; null if it is missing.
    explicit ByReference(Passed* argument)
        : argument_(argument), held_(argument == nullptr ? Held() : held(*argument)), former_(held_) {}

    /// For the library; null if the argument is missing.
    [[nodiscard]] Held* pointer() noexcept { return argument_ == nullptr ? nullptr : &held_; }
    /// Stores the value in the host's variable if the library has changed it.
    void storeBack() {
        if (argument_ != nullptr && held_ != former_) {
            replace(argument_, held_);
        }
    }

private:
    Passed* argument_;
    Held held_;
    Held former_;
};

/// A reason that a check returns, or collection XML.
using TextReference = ByReference<BSTR, std::string>;
/// Whether a save compares the sums.
using TruthReference = ByReference<VARIANT_BOOL, bool>;
/// The rows to save.
using RowsReference = ByReference<_CashFlowCollection*, std::shared_ptr<cashflow::CashFlowCollection>>;

/// Calls the library and stores back the arguments by reference, also if the call fails: what it changed until then is
/// seen by the host.
template <class Call, class... References> auto storingBack(Call&& call, References&... references) {
    try {
        const auto result = call();
        (references.storeBack(), ...);
        return result;
    } catch (...) {
        (references.storeBack(), ...);
        throw;
    }
}

} // namespace z7::com
