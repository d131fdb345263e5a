// The provider of tests/com/contract/z7cashflow/providers/VoucherProvider.h.

#include "adapters/ado/automation/Dispatch.h"
#include "adapters/sqlite/Connection.h"
#include "com/CollectionObject.h"
#include "com/classes.h"
#include "standins/AdoClasses.h"
#include "standins/AdoConnection.h"
#include "standins/HostLogin.h"
#include "z7cashflow/providers/VoucherProvider.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

namespace z7::cashflow {
inline namespace through_com {

namespace {

using test::ComPtr;
using test::Dispatch;
using test::OwnedVariant;

// COM on the thread that runs the tests.
class ComEnvironment final : public ::testing::Environment {
public:
    void SetUp() override { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    void TearDown() override {
        EXPECT_EQ(com::ModuleUse::count(), 0) << "objects are still held";
        CoUninitialize();
    }
};

const auto* const environment = ::testing::AddGlobalTestEnvironment(new ComEnvironment());

OwnedVariant asObject(const std::shared_ptr<CashFlowCollection>& rows) {
    return OwnedVariant(static_cast<IDispatch*>(com::CollectionObject::of(rows).get()));
}

std::shared_ptr<CashFlowCollection> rowsOf(const VARIANT& value) {
    auto* const object = value.vt == VT_DISPATCH ? com::objectOf<com::CollectionObject>(value.pdispVal) : nullptr;
    return object == nullptr ? nullptr : object->collection();
}

std::string textOf(const OwnedVariant& value) { return *value.value().get<std::string>(); }

bool truthOf(const OwnedVariant& value) { return *value.value().get<bool>(); }

// A variable of a script for an argument by reference, whose content is stored back when it goes out of scope.
template <class T> class Variable {
public:
    explicit Variable(T* target) : target_(target) {
        if (target != nullptr) {
            if constexpr (std::is_same_v<T, std::shared_ptr<CashFlowCollection>>) {
                variable_ = asObject(*target);
            } else {
                variable_ = OwnedVariant(*target);
            }
        }
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() {
        if (target_ == nullptr) {
            return;
        }
        if constexpr (std::is_same_v<T, std::shared_ptr<CashFlowCollection>>) {
            *target_ = rowsOf(variable_.get());
        } else {
            *target_ = *variable_.value().template get<T>();
        }
    }
    [[nodiscard]] OwnedVariant argument() {
        return target_ == nullptr ? OwnedVariant::missing() : OwnedVariant::byReference(variable_);
    }

private:
    T* target_;
    OwnedVariant variable_;
};

OwnedVariant loginObject(const std::shared_ptr<Z7Login>& login) {
    return login ? test::asValue(test::makeObject<test::HostLogin>(std::make_shared<test::CallPlan>(), login))
                 : OwnedVariant(static_cast<IDispatch*>(nullptr));
}

// The host's connection of one call.
class HostConnection {
public:
    explicit HostConnection(Connection& connection) {
        // A recordset that is opened by connection string holds a connection that nothing asks.
        ado_->makeConnection = [] { return std::make_unique<sqlite::Connection>(); };
        ado_->makeRecordset = [&connection] { return connection.createRecordset(); };
        classes_.emplace(ado_);
        object_ = test::makeObject<test::AdoConnection>(
            ado_, std::shared_ptr<Connection>(std::shared_ptr<void>(), &connection));
    }
    [[nodiscard]] OwnedVariant argument() const { return test::asValue(object_); }

private:
    std::shared_ptr<test::AdoDatabase> ado_ = std::make_shared<test::AdoDatabase>();
    std::optional<test::AdoClasses> classes_;
    ComPtr<test::AdoConnection> object_;
};

// What both contracts have in common.
class Contract {
public:
    Contract(const ComPtr<IUnknown>& provider, REFIID id) {
        ComPtr<IDispatch> contract;
        provider->QueryInterface(id, contract.putVoid());
        object_ = Dispatch(contract);
    }
    [[nodiscard]] const Dispatch& object() const { return object_; }

    template <class... Arguments>
    OwnedVariant call(Connection& objCon, const wchar_t* name, Arguments&&... arguments) const {
        const HostConnection host(objCon);
        return object_.call(name, host.argument(), std::forward<Arguments>(arguments)...);
    }
    void setLogin(const std::shared_ptr<Z7Login>& login) const {
        const OwnedVariant object = loginObject(login);
        object_.putRef(L"objLogin", object.get().pdispVal);
    }

private:
    Dispatch object_;
};

OwnedVariant argument(const Variant& value) { return OwnedVariant(value); }

class GlThroughCom final : public IGlVoucherProvider {
public:
    explicit GlThroughCom(const ComPtr<IUnknown>& provider) : contract_(provider, IID__IGlVoucherProvider) {}

    std::string VoucherTempTable() const override { return textOf(contract_.object().get(L"VoucherTempTable")); }
    void VoucherTempTable(const std::string& value) override { contract_.object().put(L"VoucherTempTable", value); }
    void objLogin(const std::shared_ptr<Z7Login>& value) override { contract_.setLogin(value); }
    Variant SetOldVouchNoID(const std::int32_t& vdata) override {
        std::int32_t number = vdata;
        Variable variable(&number);
        return contract_.object().call(L"SetOldVouchNoID", variable.argument()).value();
    }
    std::shared_ptr<CashFlowCollection> GetCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                                             std::uint8_t iPeriod, std::int16_t isignseq,
                                                             std::int32_t iNo_id, Date dbill_date) override {
        return rowsOf(contract_
                          .call(objCon, L"GetCashFlowColFromDB", strVoucherTable, argument(iPeriod), isignseq, iNo_id,
                                argument(dbill_date))
                          .get());
    }
    std::shared_ptr<CashFlowCollection> CreateCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                                                std::uint8_t iPeriod, std::int16_t isignseq,
                                                                std::int32_t iNo_id, Date dbill_date) override {
        return rowsOf(contract_
                          .call(objCon, L"CreateCashFlowColFromDB", strVoucherTable, argument(iPeriod), isignseq,
                                iNo_id, argument(dbill_date))
                          .get());
    }
    bool CheckKmFrom(Connection& objCon, const std::shared_ptr<CashFlowCollection>& objCFCol,
                     std::string* strInfo) override {
        Variable reason(strInfo);
        return truthOf(contract_.call(objCon, L"CheckKmFrom", asObject(objCFCol), reason.argument()));
    }
    bool CheckCFColFromDB(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                          std::int16_t isignseq, std::int32_t iNo_id,
                          const std::shared_ptr<CashFlowCollection>& objCFCol, std::string* strInfo) override {
        Variable reason(strInfo);
        return truthOf(contract_.call(objCon, L"CheckCFColFromDB", strVoucherTable, argument(iPeriod), isignseq, iNo_id,
                                      asObject(objCFCol), reason.argument()));
    }
    bool SaveCashFlowCol(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                         std::int16_t isignseq, std::int32_t iNo_id, std::shared_ptr<CashFlowCollection>* objCFCol,
                         bool* blnCheckCF) override {
        Variable rows(objCFCol);
        Variable check(blnCheckCF);
        return truthOf(contract_.call(objCon, L"SaveCashFlowCol", strVoucherTable, argument(iPeriod), isignseq, iNo_id,
                                      rows.argument(), check.argument()));
    }
    bool SaveCashFlowColEx(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                           std::int16_t isignseq, std::int32_t iNo_id, Date bill_date,
                           std::shared_ptr<CashFlowCollection>* objCFCol, bool* blnCheckCF) override {
        Variable rows(objCFCol);
        Variable check(blnCheckCF);
        return truthOf(contract_.call(objCon, L"SaveCashFlowColEx", strVoucherTable, argument(iPeriod), isignseq,
                                      iNo_id, argument(bill_date), rows.argument(), check.argument()));
    }
    std::string GetCashFlowColFromXml(Connection& objCon, const std::string& strVoucherXml, bool blnCreateCF) override {
        return textOf(contract_.call(objCon, L"GetCashFlowColFromXml", strVoucherXml, blnCreateCF));
    }
    bool SaveCashFlowColFromXml(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                                std::int16_t isignseq, std::int32_t iNo_id, std::string* strCFColxml,
                                bool* blnCheckCF) override {
        Variable xml(strCFColxml);
        Variable check(blnCheckCF);
        return truthOf(contract_.call(objCon, L"SaveCashFlowColFromXml", strVoucherTable, argument(iPeriod), isignseq,
                                      iNo_id, xml.argument(), check.argument()));
    }
    void bFromDraft(bool value) override { contract_.object().put(L"bFromDraft", value); }

private:
    Contract contract_;
};

class OutThroughCom final : public IOutVoucherProvider {
public:
    explicit OutThroughCom(const ComPtr<IUnknown>& provider) : contract_(provider, IID__IOutVoucherProvider) {}

    std::string VoucherTempTable() const override { return textOf(contract_.object().get(L"VoucherTempTable")); }
    void VoucherTempTable(const std::string& value) override { contract_.object().put(L"VoucherTempTable", value); }
    void objLogin(const std::shared_ptr<Z7Login>& value) override { contract_.setLogin(value); }
    std::string GetCashFlowColFromXml(Connection& objCon, const std::string& strVoucherXml, bool blnCreateCF) override {
        return textOf(contract_.call(objCon, L"GetCashFlowColFromXml", strVoucherXml, blnCreateCF));
    }
    std::string GetCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                     const std::string& coutNo_id) override {
        return textOf(contract_.call(objCon, L"GetCashFlowColFromDB", strVoucherTable, coutNo_id));
    }
    std::string CreateCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                        const std::string& coutNo_id) override {
        return textOf(contract_.call(objCon, L"CreateCashFlowColFromDB", strVoucherTable, coutNo_id));
    }
    bool CheckCFColFromXml(Connection& objCon, const std::string& strVoucherXml, const std::string& strCFColxml,
                           std::string* strInfo) override {
        Variable reason(strInfo);
        return truthOf(contract_.call(objCon, L"CheckCFColFromXml", strVoucherXml, strCFColxml, reason.argument()));
    }
    bool CheckCFColFromDB(Connection& objCon, const std::string& strVoucherTable, const std::string& coutNo_id,
                          const std::string& strCFColxml, std::string* strInfo) override {
        Variable reason(strInfo);
        return truthOf(
            contract_.call(objCon, L"CheckCFColFromDB", strVoucherTable, coutNo_id, strCFColxml, reason.argument()));
    }
    bool SaveCashFlowCol(Connection& objCon, const std::string& strVoucherTable, const std::string& coutNo_id,
                         std::string* strCFColxml, bool* blnCheckCF) override {
        Variable xml(strCFColxml);
        Variable check(blnCheckCF);
        return truthOf(
            contract_.call(objCon, L"SaveCashFlowCol", strVoucherTable, coutNo_id, xml.argument(), check.argument()));
    }

private:
    Contract contract_;
};

} // namespace

struct VoucherProvider::Parts {
    ComPtr<IUnknown> provider = com::findClass(CLSID_VoucherProvider)->create();
    GlThroughCom gl{provider};
    OutThroughCom out{provider};
};

VoucherProvider::VoucherProvider() : parts_(std::make_unique<Parts>()) {}

VoucherProvider::~VoucherProvider() = default;

IGlVoucherProvider& VoucherProvider::gl() noexcept { return parts_->gl; }

IOutVoucherProvider& VoucherProvider::out() noexcept { return parts_->out; }

std::shared_ptr<CashFlowCollection> VoucherProvider::CreateCashFlowCollection() {
    return rowsOf(Dispatch(parts_->provider.as<IDispatch>()).call(L"CreateCashFlowCollection").get());
}

void VoucherProvider::IGlVoucherProvider_bFromDraft(bool value) {
    Dispatch(parts_->provider.as<IDispatch>()).put(L"IGlVoucherProvider_bFromDraft", value);
}

} // namespace through_com
} // namespace z7::cashflow
