#include "adapters/ado/Login.h"

#include "adapters/ado/hostNames.h"
#include "adapters/ado/hostValue.h"

#include <new>
#include <utility>
#include <vector>

namespace z7::cashflow::ado {

namespace {

using adapters::automation::Dispatch;
using adapters::automation::OwnedVariant;

class HostTexts final : public TextLookup {
public:
    explicit HostTexts(Dispatch object) : object_(std::move(object)) {}
    std::string text(const std::string& key) override { return hostText(object_.get(names::text, key), names::text); }

private:
    Dispatch object_;
};

/// Values as an array of variants, which is how an argument list is passed.
class ArgumentArray {
public:
    explicit ArgumentArray(const std::vector<Variant>& values)
        : array_(SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()))) {
        if (array_ == nullptr) {
            throw std::bad_alloc();
        }
        auto* element = static_cast<VARIANT*>(array_->pvData); // Empty at first, freed with the array
        for (const Variant& value : values) {
            adapters::automation::toAutomation(value, element++);
        }
    }
    ArgumentArray(const ArgumentArray&) = delete;
    ArgumentArray& operator=(const ArgumentArray&) = delete;
    ~ArgumentArray() { SafeArrayDestroy(array_); }

    /// By reference, as Basic passes its arrays. Valid as long as the array.
    [[nodiscard]] OwnedVariant reference() {
        VARIANT value;
        VariantInit(&value);
        value.vt = VT_BYREF | VT_ARRAY | VT_VARIANT;
        value.pparray = &array_;
        return OwnedVariant::owning(value);
    }

private:
    SAFEARRAY* array_;
};

class HostFormattedTexts final : public FormattedTextLookup {
public:
    explicit HostFormattedTexts(Dispatch object) : object_(std::move(object)) {}
    std::string text(const std::string& key, const std::vector<Variant>& arguments) override {
        ArgumentArray array(arguments);
        return hostText(object_.get(names::text, key, array.reference()), names::text);
    }

private:
    Dispatch object_;
};

} // namespace

Login::Login(Dispatch login) : object_(std::move(login)) { requireObject(object_, L"Login"); }

std::string Login::text(const wchar_t* member) const { return hostText(object_.get(member), member); }

std::int32_t Login::LocaleId() { return wholeNumber(object_.get(names::localeId), names::localeId); }

std::string Login::accountId() { return text(names::accountId); }

std::string Login::accountingYear() { return text(names::accountingYear); }

std::string Login::userId() { return text(names::userId); }

std::string Login::operatorName() { return text(names::operatorName); }

std::string Login::ConnectionString() { return text(names::connectionString); }

Variant Login::information(std::int32_t code) { return object_.get(names::information, code).value(); }

std::string Login::languageTag() { return text(names::languageTag); }

std::shared_ptr<TextLookup> Login::TextLookup() {
    return std::make_shared<HostTexts>(object_.getObject(names::textLookup));
}

std::shared_ptr<FormattedTextLookup> Login::FormattedTextLookup() {
    return std::make_shared<HostFormattedTexts>(object_.getObject(names::formattedTextLookup));
}

} // namespace z7::cashflow::ado
