#include "adapters/ado/automation/Dispatch.h"

#include "standins/AutomationObject.h"
#include "z7cashflow/support/Error.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace z7::adapters::automation {
namespace {

using cashflow::Error;
using cashflow::Variant;
using cashflow::test::AutomationObject;
using cashflow::test::Call;
using cashflow::test::CallPlan;
using cashflow::test::Failure;
using cashflow::test::makeObject;

/// An object with one member of each kind.
class Sample final : public AutomationObject {
public:
    explicit Sample(std::shared_ptr<CallPlan> plan) : AutomationObject(std::move(plan), IID{}) {
        property(
            L"Name", [this](const Call&) { return OwnedVariant(name_); },
            [this](const Call& call) {
                name_ = (call.isPutRef() ? "object" : call.text(0));
                return OwnedVariant();
            });
        property(L"Cell", [](const Call& call) { return OwnedVariant(call.text(0) + "," + call.text(1)); });
        method(L"Join", [](const Call& call) {
            return OwnedVariant(call.text(0) + "-" + call.text(1) + "-" + call.text(2, "left out"));
        });
        method(L"Count", [](const Call& call) {
            call.store(0, 42);
            return OwnedVariant();
        });
        property(L"Self", [this](const Call&) { return OwnedVariant(static_cast<IDispatch*>(this)); });
        property(L"Nothing", [](const Call&) { return OwnedVariant(static_cast<IDispatch*>(nullptr)); });
    }

    std::size_t lookups = 0;

    STDMETHOD(GetIDsOfNames)(REFIID iid, LPOLESTR* memberNames, UINT count, LCID locale, DISPID* ids) override {
        ++lookups;
        return AutomationObject::GetIDsOfNames(iid, memberNames, count, locale, ids);
    }

private:
    std::string name_ = "first";
};

class DispatchTest : public ::testing::Test {
protected:
    template <class Action> Error errorOf(Action&& action) {
        try {
            action();
        } catch (const Error& error) {
            return error;
        }
        ADD_FAILURE() << "no error was raised";
        return {0, "", ""};
    }
    Error errorWith(const Failure& failure) {
        plan_->failAt(1, failure);
        return errorOf([this] { object_.call(L"Join"); });
    }

    std::shared_ptr<CallPlan> plan_ = std::make_shared<CallPlan>();
    ComPtr<Sample> sample_ = makeObject<Sample>(plan_);
    Dispatch object_{sample_.get()};
};

TEST_F(DispatchTest, PropertiesAreReadAndChanged) {
    EXPECT_EQ(object_.get(L"Name").value(), Variant("first"));
    object_.put(L"name", "second");
    EXPECT_EQ(object_.get(L"NAME").value(), Variant("second"));
    object_.putRef(L"Name", sample_.get());
    EXPECT_EQ(object_.get(L"Name").value(), Variant("object"));
}

TEST_F(DispatchTest, ArgumentsArriveInTheirOrder) {
    EXPECT_EQ(object_.get(L"Cell", std::int32_t{1}, "x").value(), Variant("1,x"));
    EXPECT_EQ(object_.call(L"Join", "a", true, OwnedVariant::missing()).value(), Variant("a-True-left out"));
    EXPECT_EQ(object_.get(L"Join", "a", "b", "c").value(), Variant("a-b-c")) << "a method that returns a value";
}

TEST_F(DispatchTest, AnArgumentByReferenceReceivesWhatTheObjectStores) {
    OwnedVariant count("before");
    object_.call(L"Count", OwnedVariant::byReference(count));
    EXPECT_EQ(count.value(), Variant(std::int32_t{42}));
}

TEST_F(DispatchTest, EachMemberIsLookedUpOnce) {
    for (int i = 0; i < 3; ++i) {
        object_.get(L"Name");
        object_.put(L"Name", "x");
        object_.call(L"Join");
    }
    EXPECT_EQ(sample_->lookups, 2U);
}

TEST_F(DispatchTest, ObjectsAreReturnedAsObjects) {
    EXPECT_EQ(object_.getObject(L"Self").pointer(), sample_.get());
    EXPECT_EQ(errorOf([this] { static_cast<void>(object_.getObject(L"Nothing")); }).number(), 91);
    EXPECT_EQ(errorOf([this] { static_cast<void>(object_.getObject(L"Name")); }).number(), 13);
    OwnedVariant held(static_cast<IDispatch*>(sample_.get()));
    EXPECT_EQ(Dispatch::ofValue(OwnedVariant::byReference(held).get(), L"x").pointer(), sample_.get());
    EXPECT_EQ(errorOf([] { static_cast<void>(Dispatch::ofValue(OwnedVariant().get(), L"x")); }).number(), 91);
}

TEST_F(DispatchTest, NothingIsError91) {
    const Error error = errorOf([] { Dispatch().get(L"LocaleId"); });
    EXPECT_EQ(error.number(), 91);
    EXPECT_NE(error.description().find("LocaleId"), std::string::npos) << error.description();
}

TEST_F(DispatchTest, AMissingMemberIsNamed) {
    const Error error = errorOf([this] { object_.get(L"Absent"); });
    EXPECT_EQ(error.number(), 438);
    EXPECT_NE(error.description().find("Absent"), std::string::npos) << error.description();
    EXPECT_EQ(errorOf([this] { object_.put(L"Self", "x"); }).number(), 438) << "it cannot be changed";
}

TEST_F(DispatchTest, AnExceptionKeepsItsNumberSourceAndText) {
    const Error own = errorWith({static_cast<HRESULT>(0x800A0E78), "ADODB.Connection", "对象已关闭", true});
    EXPECT_EQ(own.number(), 3704);
    EXPECT_EQ(own.source(), "ADODB.Connection");
    EXPECT_EQ(own.description(), "对象已关闭");
    const Error provider = errorWith({static_cast<HRESULT>(0x80040E14), "Provider", "Incorrect syntax", true});
    EXPECT_EQ(provider.number(), static_cast<int>(0x80040E14));
    EXPECT_EQ(provider.description(), "Incorrect syntax");
}

TEST_F(DispatchTest, AnExceptionWithoutTextsGetsThoseOfTheSystem) {
    const Error error = errorWith({E_ACCESSDENIED, "", "", true});
    EXPECT_EQ(error.number(), static_cast<int>(E_ACCESSDENIED));
    EXPECT_EQ(error.source(), "Z7CashFlow");
    EXPECT_NE(error.description().find("Join"), std::string::npos) << error.description();
    EXPECT_NE(error.description().find(systemText(E_ACCESSDENIED)), std::string::npos) << error.description();
}

TEST_F(DispatchTest, APlainCodeGetsTheSystemsText) {
    const Error error = errorWith({E_NOTIMPL, "", "", false});
    EXPECT_EQ(error.number(), static_cast<int>(E_NOTIMPL));
    EXPECT_NE(error.description().find(systemText(E_NOTIMPL)), std::string::npos) << error.description();
    EXPECT_EQ(errorWith({DISP_E_TYPEMISMATCH, "", "", false}).number(), 13);
    EXPECT_EQ(errorWith({DISP_E_OVERFLOW, "", "", false}).number(), 6);
    EXPECT_EQ(errorWith({E_OUTOFMEMORY, "", "", false}).number(), 7);
    EXPECT_EQ(errorWith({static_cast<HRESULT>(0x800A0005), "", "", false}).number(), 5);
}

TEST(SystemText, HasNoLineBreakAndAlwaysSaysSomething) {
    EXPECT_FALSE(systemText(E_ACCESSDENIED).empty());
    EXPECT_EQ(systemText(E_ACCESSDENIED).find_first_of("\r\n"), std::string::npos);
    EXPECT_EQ(systemText(static_cast<HRESULT>(0x8ABC1234)), "0x8ABC1234");
}

TEST(DispatchCreate, NamesTheClassThatDoesNotExist) {
    try {
        static_cast<void>(Dispatch::create(L"Z7Test.NoSuchClass"));
        FAIL() << "no error was raised";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), static_cast<int>(CO_E_CLASSSTRING));
        EXPECT_NE(error.description().find("Z7Test.NoSuchClass"), std::string::npos) << error.description();
    }
}

TEST(ComPtrTest, CountsReferencesOnce) {
    const auto plan = std::make_shared<CallPlan>();
    const long before = AutomationObject::liveObjects();
    {
        ComPtr<Sample> first = makeObject<Sample>(plan);
        ComPtr<Sample> second = first;
        second = second; // NOLINT(clang-diagnostic-self-assign-overloaded): it must keep its object
        EXPECT_EQ(second, first);
        ComPtr<IDispatch> other = first.as<IDispatch>();
        EXPECT_TRUE(other);
        EXPECT_FALSE(first.as<IStream>()) << "an interface that it does not have";
        IDispatch* raw = nullptr;
        other.copyTo(&raw);
        const auto owned = ComPtr<IDispatch>::owning(raw);
        first.reset();
        second.attach(second.detach());
        EXPECT_EQ(AutomationObject::liveObjects(), before + 1);
    }
    EXPECT_EQ(AutomationObject::liveObjects(), before);
}

} // namespace
} // namespace z7::adapters::automation
