#pragma once

#include "adapters/ado/automation/ComPtr.h"
#include "doubles/FakeLogin.h"
#include "doubles/RecordingMessageBox.h"
#include "outside/Company.h"
#include "standins/AdoClasses.h"
#include "standins/AdoDatabase.h"

#include <memory>

namespace z7::test {

/// The host's side of a test: the small company on the embedded database behind ADO objects that stand in for those of
/// the system, and the login of a user in English. The ADO classes are those of the thread that made it.
class SuiteHost {
public:
    SuiteHost();
    SuiteHost(const SuiteHost&) = delete;
    SuiteHost& operator=(const SuiteHost&) = delete;

    /// The company, for what is stored and what was sent.
    [[nodiscard]] cashflow::test::Company& company() noexcept { return company_; }
    /// What the login answers.
    [[nodiscard]] cashflow::test::FakeLogin& user() noexcept { return *user_; }
    /// A login object, as the host passes it.
    [[nodiscard]] adapters::automation::ComPtr<IDispatch> login();
    /// The ADO connection of the company's session, as the host passes it.
    [[nodiscard]] adapters::automation::ComPtr<IDispatch> connection();

private:
    cashflow::test::Company company_;
    std::shared_ptr<cashflow::test::FakeLogin> user_;
    std::shared_ptr<cashflow::test::AdoDatabase> ado_;
    cashflow::test::AdoClasses classes_;
};

} // namespace z7::test
