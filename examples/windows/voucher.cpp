// Generates, checks and stores the cash-flow rows of a voucher with Z7CashFlow.dll: voucher.vbs as a compiled host
// writes it.

#include "voucher.h"

#include <Z7CashFlow.h>

namespace {

constexpr DATE date = 41279.0; // 2013-01-05

// A text that belongs to this object.
class Text {
public:
    explicit Text(const wchar_t* text = nullptr) : text_(SysAllocString(text)) {}
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    ~Text() { SysFreeString(text_); }
    [[nodiscard]] BSTR get() const { return text_; }
    [[nodiscard]] BSTR* put() { return &text_; }
    [[nodiscard]] const wchar_t* shown() const { return text_ == nullptr ? L"" : text_; }

private:
    BSTR text_;
};

// An interface pointer that belongs to this object.
template <class Interface> class Pointer {
public:
    Pointer() = default;
    Pointer(const Pointer&) = delete;
    Pointer& operator=(const Pointer&) = delete;
    ~Pointer() {
        if (pointer_ != nullptr) {
            pointer_->Release();
        }
    }
    [[nodiscard]] Interface* get() const { return pointer_; }
    [[nodiscard]] Interface** put() { return &pointer_; }
    Interface* operator->() const { return pointer_; }

private:
    Interface* pointer_ = nullptr;
};

// Every method returns a code, and leaves number, source and description of an error with the thread.
void require(HRESULT code) {
    if (FAILED(code)) {
        throw code;
    }
}

void writeError(HRESULT code, std::wostream& out) {
    Text source;
    Text description;
    Pointer<IErrorInfo> error;
    if (GetErrorInfo(0, error.put()) == S_OK) {
        error->GetSource(source.put());
        error->GetDescription(description.put());
    }
    // The number of an error of the library is the low half of its code.
    out << (HRESULT_FACILITY(code) == FACILITY_CONTROL ? HRESULT_CODE(code) : code) << L" from " << source.shown()
        << L": " << description.shown() << L'\n';
}

VARIANT field(_CashFlow* row, const wchar_t* name) {
    VARIANT value;
    VariantInit(&value);
    require(row->get_Item(Text(name).get(), &value));
    return value;
}

void writeField(_CashFlow* row, const wchar_t* label, const wchar_t* name, std::wostream& out) {
    VARIANT value = field(row, name);
    VARIANT text;
    VariantInit(&text);
    if (VariantChangeType(&text, &value, 0, VT_BSTR) == S_OK) {
        out << label << text.bstrVal;
    }
    VariantClear(&value);
    VariantClear(&text);
}

void writeRows(_CashFlowCollection* rows, std::wostream& out) {
    LONG count = 0;
    require(rows->get_Count(&count));
    VARIANT index;
    VariantInit(&index);
    index.vt = VT_I4;
    for (index.lVal = 1; index.lVal <= count; ++index.lVal) {
        Pointer<_CashFlow> row;
        require(rows->get_Item(index, row.put()));
        writeField(row.get(), L"line ", L"inid", out);
        writeField(row.get(), L" account ", L"ccode", out);
        writeField(row.get(), L" item ", L"cCashItem", out);
        writeField(row.get(), L" credit ", L"mc", out);
        out << L'\n';
    }
}

// A voucher that is worked on with a provider.
class Voucher {
public:
    Voucher(_IGlVoucherProvider* provider, IDispatch* connection) : provider_(provider), connection_(connection) {}

    void generate(_CashFlowCollection** rows) {
        require(provider_->CreateCashFlowColFromDB(&connection_, table_.get(), 1, 1, 6, date, rows));
    }
    void check(_CashFlowCollection* rows, std::wostream& out) {
        Text reason;
        VARIANT_BOOL fits = VARIANT_FALSE;
        require(provider_->CheckCFColFromDB(&connection_, table_.get(), 1, 1, 6, rows, reason.put(), &fits));
        out << (fits == VARIANT_TRUE ? L"fits: True" : L"fits: False, ") << reason.shown() << L'\n';
    }
    // The collection is passed by reference; the null pointer stands for an argument that is left out.
    void save(_CashFlowCollection* rows, std::wostream& out) {
        VARIANT_BOOL saved = VARIANT_FALSE;
        require(provider_->SaveCashFlowCol(&connection_, table_.get(), 1, 1, 6, &rows, nullptr, &saved));
        out << (saved == VARIANT_TRUE ? L"saved: True" : L"saved: False") << L'\n';
    }

private:
    _IGlVoucherProvider* provider_;
    IDispatch* connection_;
    Text table_{L"gl_accvouch"};
};

void setCreditOfFirstRow(_CashFlowCollection* rows, double credit) {
    VARIANT first;
    first.vt = VT_I4;
    first.lVal = 1;
    Pointer<_CashFlow> row;
    require(rows->get_Item(first, row.put()));
    VARIANT value;
    value.vt = VT_R8;
    value.dblVal = credit;
    require(row->SetValue(Text(L"mc").get(), value));
}

} // namespace

void allocateVoucher(IDispatch* login, IDispatch* connection, std::wostream& out) {
    try {
        Pointer<_IGlVoucherProvider> provider;
        require(CoCreateInstance(CLSID_VoucherProvider, nullptr, CLSCTX_INPROC_SERVER, IID__IGlVoucherProvider,
                                 reinterpret_cast<void**>(provider.put())));
        require(provider->putref_objLogin(login));
        Voucher voucher(provider.get(), connection);

        Pointer<_CashFlowCollection> rows;
        voucher.generate(rows.put());
        writeRows(rows.get(), out);
        voucher.check(rows.get(), out);
        voucher.save(rows.get(), out);

        setCreditOfFirstRow(rows.get(), 9.0);
        voucher.check(rows.get(), out);
        voucher.save(rows.get(), out);
    } catch (const HRESULT code) {
        writeError(code, out);
    }
}
