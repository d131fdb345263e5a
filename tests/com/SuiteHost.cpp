#include "com/SuiteHost.h"

#include "adapters/sqlite/Connection.h"
#include "standins/AdoConnection.h"
#include "standins/HostLogin.h"
#include "texts/CatalogueText.h"

namespace z7::test {

namespace fakes = cashflow::test;
using adapters::automation::ComPtr;

namespace {

// The user's texts are those of the catalogue.
class EnglishUser final : public fakes::FakeLogin {
public:
    std::shared_ptr<cashflow::TextLookup> TextLookup() override {
        return std::make_shared<cashflow::texts::CatalogueText>(cashflow::texts::Language::english);
    }
};

// A pointer to something that the test owns.
template <class T> std::shared_ptr<T> lent(T& object) { return {std::shared_ptr<void>(), &object}; }

} // namespace

SuiteHost::SuiteHost()
    : user_(std::make_shared<EnglishUser>()), ado_(std::make_shared<fakes::AdoDatabase>()), classes_(ado_) {
    user_->answers.languageTag = "en-US";
    user_->localeId = 1033;
    user_->connectionString = company_.connection().ConnectionString();
    ado_->makeConnection = [] { return std::make_unique<cashflow::sqlite::Connection>(); };
    ado_->makeRecordset = [this] { return company_.connection().createRecordset(); };
}

ComPtr<IDispatch> SuiteHost::login() { return fakes::makeObject<fakes::HostLogin>(ado_->calls, user_).as<IDispatch>(); }

ComPtr<IDispatch> SuiteHost::connection() {
    return fakes::makeObject<fakes::AdoConnection>(ado_, lent<cashflow::Connection>(company_.connection()))
        .as<IDispatch>();
}

} // namespace z7::test
