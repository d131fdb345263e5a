#pragma once

#include "standins/AdoDatabase.h"
#include "standins/AutomationObject.h"

#include <functional>
#include <memory>
#include <string>

namespace z7::cashflow::test {

/// The object of a class that the system creates on this thread, as long as this exists.
class RegisteredClass {
public:
    /// Makes the objects of the class by the function. It applies to the apartment of the calling thread only.
    RegisteredClass(const CLSID& classId, std::function<ComPtr<IDispatch>()> make);
    RegisteredClass(const RegisteredClass&) = delete;
    RegisteredClass& operator=(const RegisteredClass&) = delete;
    ~RegisteredClass();

private:
    DWORD cookie_ = 0;
};

/// The classes ADODB.Connection and ADODB.Recordset on this thread: their objects are those of the stand-in.
class AdoClasses {
public:
    explicit AdoClasses(const std::shared_ptr<AdoDatabase>& database);

private:
    RegisteredClass connections_;
    RegisteredClass recordsets_;
};

/// A program identifier for a class, as long as this exists. The registry is that of the whole system.
class RegisteredProgramId {
public:
    RegisteredProgramId(const std::wstring& programId, const CLSID& classId);
    RegisteredProgramId(const RegisteredProgramId&) = delete;
    RegisteredProgramId& operator=(const RegisteredProgramId&) = delete;
    ~RegisteredProgramId();

private:
    std::wstring key_;
};

} // namespace z7::cashflow::test
