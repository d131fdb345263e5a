#pragma once

#include "standins/AutomationObject.h"
#include "z7cashflow/ports/Z7Login.h"

#include <memory>
#include <set>
#include <string>

namespace z7::cashflow::test {

/// The host's login as an automation object over a login of the library, with its two catalogues of texts.
class HostLogin final : public AutomationObject {
public:
    /// Without the members in the list, as an older host might be.
    HostLogin(std::shared_ptr<CallPlan> plan, std::shared_ptr<Z7Login> login,
              const std::set<std::wstring>& absent = {});

private:
    ~HostLogin() override = default;
    void add(const wchar_t* name, Handler get);

    std::shared_ptr<Z7Login> login_;
    std::set<std::wstring> absent_;
};

/// An object that returns one and the same value from every member of a login, to see what is made of a wrong one.
class WrongLogin final : public AutomationObject {
public:
    WrongLogin(std::shared_ptr<CallPlan> plan, OwnedVariant answer);

private:
    ~WrongLogin() override = default;
};

} // namespace z7::cashflow::test
