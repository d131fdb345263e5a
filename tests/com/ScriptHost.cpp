#include "com/ScriptHost.h"

#include "adapters/ado/automation/Bstr.h"
#include "adapters/ado/automation/Dispatch.h"
#include "adapters/ado/automation/OwnedVariant.h"
#include "standins/AutomationObject.h"
#include "z7cashflow/support/conversions.h"

#include <activscp.h>

#include <stdexcept>

namespace z7::test {

namespace {

namespace fakes = cashflow::test;
using adapters::automation::Bstr;
using adapters::automation::ComPtr;
using adapters::automation::OwnedVariant;

constexpr IID scriptObjectId = {0x0b3a7a5f, 0x6c05, 0x4a2b, {0x93, 0x1d, 0x4d, 0x0a, 0x7f, 0x5d, 0x3e, 0x11}};

// The object WScript.
class ScriptObject final : public fakes::AutomationObject {
public:
    explicit ScriptObject(std::vector<std::string>& lines)
        : AutomationObject(std::make_shared<fakes::CallPlan>(), scriptObjectId) {
        method(L"Echo", [&lines](const fakes::Call& call) {
            std::string line;
            for (std::size_t i = 0; i < call.size(); ++i) {
                line += (i > 0 ? " " : "") + cashflow::toTextOrEmpty(call.value(i));
            }
            std::size_t end = 0;
            for (std::size_t begin = 0; end != std::string::npos; begin = end + 2) {
                end = line.find("\r\n", begin);
                lines.push_back(line.substr(begin, end - begin));
            }
            return OwnedVariant();
        });
        method(L"CreateObject", [](const fakes::Call& call) {
            return OwnedVariant(
                adapters::automation::Dispatch::create(adapters::automation::wide(call.text(0)).c_str()).pointer());
        });
    }

private:
    ~ScriptObject() override = default;
};

// What the engine asks its host for. It lives on the stack of run(), which outlives the engine.
class Site final : public IActiveScriptSite {
public:
    Site(std::map<std::wstring, ComPtr<IDispatch>>& objects, std::vector<std::string>& lines)
        : objects_(objects), lines_(lines) {}
    Site(const Site&) = delete;
    Site& operator=(const Site&) = delete;
    virtual ~Site() = default;

    [[nodiscard]] bool failed() const noexcept { return failed_; }

    STDMETHOD(QueryInterface)(REFIID id, void** out) override {
        const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IActiveScriptSite);
        *out = known ? static_cast<IActiveScriptSite*>(this) : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHOD_(ULONG, AddRef)() override { return 2; }
    STDMETHOD_(ULONG, Release)() override { return 1; }
    STDMETHOD(GetLCID)(LCID* locale) override {
        *locale = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
        return S_OK;
    }
    STDMETHOD(GetItemInfo)(LPCOLESTR name, DWORD wanted, IUnknown** object, ITypeInfo** type) override {
        const auto found = objects_.find(name);
        if (type != nullptr) {
            *type = nullptr;
        }
        if (found == objects_.end()) {
            return TYPE_E_ELEMENTNOTFOUND;
        }
        if ((wanted & SCRIPTINFO_IUNKNOWN) != 0) {
            *object = ComPtr<IUnknown>(found->second.get()).detach();
        }
        return S_OK;
    }
    STDMETHOD(GetDocVersionString)(BSTR*) override { return E_NOTIMPL; }
    STDMETHOD(OnScriptTerminate)(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    STDMETHOD(OnStateChange)(SCRIPTSTATE) override { return S_OK; }
    STDMETHOD(OnScriptError)(IActiveScriptError* error) override {
        EXCEPINFO exception{};
        DWORD context = 0;
        ULONG line = 0;
        LONG column = 0;
        error->GetExceptionInfo(&exception);
        error->GetSourcePosition(&context, &line, &column);
        lines_.push_back("error in line " + std::to_string(line + 1) + ": " +
                         adapters::automation::utf8OfBstr(exception.bstrSource) + ": " +
                         adapters::automation::utf8OfBstr(exception.bstrDescription));
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrDescription);
        SysFreeString(exception.bstrHelpFile);
        failed_ = true;
        return S_OK;
    }
    STDMETHOD(OnEnterScript)() override { return S_OK; }
    STDMETHOD(OnLeaveScript)() override { return S_OK; }

private:
    std::map<std::wstring, ComPtr<IDispatch>>& objects_;
    std::vector<std::string>& lines_;
    bool failed_ = false;
};

void require(HRESULT result, const char* what) {
    if (FAILED(result)) {
        throw std::runtime_error(std::string(what) + ": " + std::to_string(result));
    }
}

} // namespace

void ScriptHost::add(const std::wstring& name, ComPtr<IDispatch> object) { objects_[name] = std::move(object); }

std::vector<std::string> ScriptHost::run(const std::string& script) {
    std::vector<std::string> lines;
    objects_[L"WScript"] = fakes::makeObject<ScriptObject>(lines).as<IDispatch>();
    CLSID id{};
    require(CLSIDFromProgID(L"VBScript", &id), "The system has no VBScript");
    ComPtr<IActiveScript> engine;
    require(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript, engine.putVoid()), "no engine");
    const auto parser = engine.as<IActiveScriptParse>();
    Site site(objects_, lines);
    require(engine->SetScriptSite(&site), "SetScriptSite");
    require(parser->InitNew(), "InitNew");
    for (const auto& [name, object] : objects_) {
        require(engine->AddNamedItem(name.c_str(), SCRIPTITEM_ISVISIBLE), "AddNamedItem");
    }
    EXCEPINFO exception{};
    const HRESULT parsed = parser->ParseScriptText(adapters::automation::wide(script).c_str(), nullptr, nullptr,
                                                   nullptr, 0, 0, 0, nullptr, &exception);
    if (SUCCEEDED(parsed)) {
        engine->SetScriptState(SCRIPTSTATE_STARTED);
    }
    engine->Close();
    failed_ = site.failed() || FAILED(parsed);
    objects_.erase(L"WScript");
    return lines;
}

} // namespace z7::test
