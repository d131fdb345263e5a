#include "adapters/ado/MessageBox.h"

#include "adapters/conformance/DatabaseUnderTest.h"
#include "doubles/RecordingMessageBox.h"
#include "standins/AdoClasses.h"
#include "standins/HostMessageBox.h"

#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::test {
namespace {

using conformance::errorOf;

constexpr CLSID boxClass{0x5a370010, 0x11d0, 0x4c10, {0x9a, 1, 2, 3, 4, 5, 6, 7}};

/// A program identifier that no other process uses.
std::wstring uniqueProgramId() { return L"Z7Test.MessageBox." + std::to_wstring(GetCurrentProcessId()); }

/// A box of the system that is not shown.
class RecordedSystemBox {
public:
    [[nodiscard]] ado::MessageBox::SystemBox function() {
        return [this](const std::wstring& prompt, const std::wstring& title, std::int32_t buttons) {
            shown.push_back(prompt + L"|" + title + L"|" + std::to_wstring(buttons));
            return std::int32_t{7};
        };
    }
    std::vector<std::wstring> shown;
};

class SuiteBoxTest : public ::testing::Test {
protected:
    std::shared_ptr<CallPlan> plan_ = std::make_shared<CallPlan>();
    std::shared_ptr<RecordingMessageBox> recording_ = std::make_shared<RecordingMessageBox>();
    int created_ = 0;
    RegisteredProgramId programId_{uniqueProgramId(), boxClass};
    RegisteredClass class_{boxClass, [this] {
                               ++created_;
                               return ComPtr<IDispatch>(makeObject<HostMessageBox>(plan_, recording_).get());
                           }};
    RecordedSystemBox system_;
    ado::MessageBox box_{system_.function(), uniqueProgramId()};
};

TEST_F(SuiteBoxTest, GetsTheLocaleAndFiveArgumentsAndItsAnswerIsReturned) {
    recording_->answers = {6};
    EXPECT_EQ(created_, 0) << "it is created when it is needed first";
    box_.locale("2052");
    EXPECT_EQ(box_.Show("继续？", 36, "标题", "help.chm", 12), 6);
    EXPECT_EQ(box_.Show("x", 0, "", "", 0), 1);
    EXPECT_EQ(recording_->log,
              (std::vector<std::string>{"Locale 2052", "Show 继续？|36|标题|help.chm|12", "Show x|0|||0"}));
    EXPECT_EQ(created_, 1);
    EXPECT_TRUE(system_.shown.empty());
}

TEST_F(SuiteBoxTest, ItsFailuresAreErrors) {
    box_.locale("2052");
    plan_->failAt(1, {E_FAIL, "Box", "no desktop", true});
    EXPECT_EQ(errorOf([&] { box_.locale("2052"); }).description(), "no desktop");
    plan_->failAt(1, {E_FAIL, "Box", "no desktop", true});
    EXPECT_EQ(errorOf([&] { box_.Show("x", 0, "", "", 0); }).description(), "no desktop");
    EXPECT_TRUE(system_.shown.empty()) << "the suite has a box, so the system's is not used";
}

TEST(SystemBoxTest, TakesThePlaceOfAClassThatIsNotRegistered) {
    RecordedSystemBox system;
    ado::MessageBox box(system.function(), uniqueProgramId());
    box.locale("2052");
    EXPECT_EQ(box.Show("继续？", 36, "标题", "help.chm", 12), 7);
    EXPECT_EQ(system.shown, (std::vector<std::wstring>{L"继续？|标题|36"}));
}

TEST(SystemBoxTest, ARegisteredClassThatCannotBeCreatedIsAnError) {
    const RegisteredProgramId programId(uniqueProgramId(), boxClass);
    RecordedSystemBox system;
    ado::MessageBox box(system.function(), uniqueProgramId());
    for (int attempt = 0; attempt < 2; ++attempt) {
        EXPECT_EQ(errorOf([&] { box.Show("x", 0, "", "", 0); }).number(), static_cast<int>(REGDB_E_CLASSNOTREG));
    }
    EXPECT_TRUE(system.shown.empty());
}

} // namespace
} // namespace z7::cashflow::test
