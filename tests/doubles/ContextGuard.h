#pragma once

#include "doubles/FakeLogin.h"
#include "doubles/GuidSequence.h"
#include "doubles/RecordingMessageBox.h"
#include "z7cashflow/model/modPublic.h"

#include <gtest/gtest.h>

#include <memory>

namespace z7::cashflow::test {

/// Resets the thread's context for its lifetime, and again at its end.
class ContextGuard {
public:
    ContextGuard() { modPublic::context() = modPublic::Context{}; }
    ~ContextGuard() { modPublic::context() = modPublic::Context{}; }
    ContextGuard(const ContextGuard&) = delete;
    ContextGuard& operator=(const ContextGuard&) = delete;
};

/// A test with a new context, without a login.
class ContextTest : public testing::Test {
private:
    ContextGuard guard_;
};

/// A test with a login of the accounting year 2013, recorded message boxes and numbered GUIDs.
class LoginTest : public ContextTest {
protected:
    LoginTest() {
        modPublic::SetLogin(login);
        modPublic::context().createMessageBox = [box = messages] { return box; };
        modPublic::context().guidSource = guids.source();
        modPublic::context().debugSink = [this](const std::string& text) { debugTexts.push_back(text); };
        login->calls.clear();
    }

    std::shared_ptr<FakeLogin> login = std::make_shared<FakeLogin>();
    std::shared_ptr<RecordingMessageBox> messages = std::make_shared<RecordingMessageBox>();
    GuidSequence guids;
    std::vector<std::string> debugTexts;
};

/// Fails unless the statement raises an Error with the number.
#define EXPECT_ERROR(statement, expectedNumber)                                                                        \
    EXPECT_EQ(::z7::cashflow::test::errorNumberOf([&] { (void)(statement); }), (expectedNumber)) << #statement

/// The number of the Error that an action raises; 0 if it raises none.
template <class Action> int errorNumberOf(Action&& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

/// The Error that an action raises; if it raises none, the test fails and the number is 0.
template <class Action> Error errorOf(Action&& action) {
    try {
        action();
    } catch (const Error& error) {
        return error;
    }
    ADD_FAILURE() << "no error was raised";
    return Error(0, "", "");
}

} // namespace z7::cashflow::test
