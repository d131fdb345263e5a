#pragma once

#include "adapters/ado/automation/ComPtr.h"
#include "adapters/ado/automation/system.h"

#include <map>
#include <string>
#include <vector>

namespace z7::test {

/// Runs scripts in VBScript. A script has the objects that it was given by name, and the object WScript with the
/// methods Echo and CreateObject. The latter is used instead of the language's own function, which in Wine keeps a
/// reference to each class object. Unlike the system's own host this one reports the line of an error.
class ScriptHost {
public:
    /// Gives scripts an object under a name.
    void add(const std::wstring& name, adapters::automation::ComPtr<IDispatch> object);

    /// Runs a script to its end or to its first error. Returns the lines that it has written; an error is the last one,
    /// as "error in line 3: Microsoft VBScript runtime error: ...". Whether there was one is in failed().
    [[nodiscard]] std::vector<std::string> run(const std::string& script);
    /// Whether the last script ended with an error.
    [[nodiscard]] bool failed() const noexcept { return failed_; }

private:
    std::map<std::wstring, adapters::automation::ComPtr<IDispatch>> objects_;
    bool failed_ = false;
};

} // namespace z7::test
