#include "z7cashflow/dialog/frmCashFlow.h"

#include "z7cashflow/dialog/dialogText.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/ports/DialogFactory.h"
#include "z7cashflow/support/Error.h"

namespace z7::cashflow {

namespace {

ControlDesign buttonDesign(const char* name, const char* caption, std::int32_t left, std::int32_t width, int tabOrder) {
    ControlDesign button;
    button.name = name;
    button.controlClass = ControlClass::commandButton;
    button.left = left;
    button.top = 5040;
    button.width = width;
    button.height = 330;
    button.tabOrder = tabOrder;
    button.caption = caption;
    button.fontName = "宋体";
    button.fontPoints = 9.0;
    return button;
}

ControlDesign gridDesign() {
    ControlDesign grid;
    grid.name = "SuperGrid1";
    grid.controlClass = ControlClass::superGrid;
    grid.left = 120;
    grid.top = 120;
    grid.width = 9855;
    grid.height = 4815;
    grid.tabOrder = 0;
    grid.fontName = "宋体";
    grid.fontPoints = 9.0;
    grid.foreColorFixed = static_cast<std::int32_t>(0x80000012U);
    grid.backColorFixed = static_cast<std::int32_t>(0x8000000FU);
    grid.redraw = true;
    grid.editBorderStyle = 0;
    return grid;
}

ControlDesign unseenDesign(const char* name, ControlClass controlClass, std::int32_t left, std::int32_t top) {
    ControlDesign control;
    control.name = name;
    control.controlClass = controlClass;
    control.left = left;
    control.top = top;
    return control;
}

FormDesign design() {
    constexpr const char* title = "现金流录入修改";
    ControlDesign caption = unseenDesign("ZQFrmCaptionMgr", ControlClass::frmCaption, 2130, 4410);
    caption.caption = title;
    caption.fontName = "宋体";
    caption.fontPoints = 8.25;
    FormDesign form;
    form.name = "frmCashFlow";
    form.caption = title;
    form.width = 10125;
    form.height = 5505;
    form.controls = {gridDesign(),
                     buttonDesign("cmdTemplate", "另存取数关系", 120, 1245, 1),
                     buttonDesign("cmdAutoGetData", "重新取数", 1460, 1125, 2),
                     buttonDesign("cmdAdd", "增行", 2680, 1125, 3),
                     buttonDesign("cmdInsert", "插行", 3900, 1125, 4),
                     buttonDesign("cmdDel", "删行", 5120, 1125, 5),
                     buttonDesign("cmdOk", "确定", 6340, 1125, 6),
                     buttonDesign("cmdCancel", "取消", 7560, 1125, 7),
                     unseenDesign("ZQKeyHookCtrl1", ControlClass::keyHook, 3060, 4500),
                     caption};
    return form;
}

} // namespace

frmCashFlow::frmCashFlow() = default;

frmCashFlow::~frmCashFlow() = default;

DialogForm& frmCashFlow::form() {
    if (!form_) {
        const auto& factory = modPublic::context().dialogFactory;
        if (!factory) {
            raisePlatformError(Reason::dialogFactoryMissing);
        }
        form_ = factory->createForm(design(), *this);
        loadForm();
    }
    return *form_;
}

Connection& frmCashFlow::connection() const {
    if (!objCon_) {
        raisePlatformError(Reason::dialogConnectionMissing);
    }
    return *objCon_;
}

CashFlowCollection& frmCashFlow::collection() const {
    if (!CashFlowCol_) {
        raisePlatformError(Reason::dialogRowsMissing);
    }
    return *CashFlowCol_;
}

VoucherKey frmCashFlow::voucherKey() const {
    return {collection().iPeriod(), collection().isignseq(), collection().iNo_id()};
}

void frmCashFlow::showModal() { form().showModal(); }

void frmCashFlow::click(const std::string& button) {
    if (button == "cmdTemplate") {
        cmdTemplate();
    } else if (button == "cmdAutoGetData") {
        cmdAutoGetData();
    } else if (button == "cmdAdd") {
        cmdAdd();
    } else if (button == "cmdInsert") {
        cmdInsert();
    } else if (button == "cmdDel") {
        cmdDel();
    } else if (button == "cmdOk") {
        cmdOk();
    } else if (button == "cmdCancel") {
        cmdCancel();
    }
}

void frmCashFlow::keyDown(std::int32_t& keyCode, std::int32_t /*shift*/) {
    constexpr std::int32_t keyDelete = 46;
    constexpr std::int32_t keyF5 = 116;
    constexpr std::int32_t keyF6 = 117;
    if (keyCode == keyF5) {
        if (form().button("cmdAdd").Enabled()) {
            cmdAdd();
        }
    } else if (keyCode == keyF6) {
        if (form().button("cmdOk").Enabled()) {
            cmdOk();
        }
    } else if (keyCode == keyDelete) {
        const ActiveEditor* editor = grid().ActiveEditor();
        const bool deletesText = editor != nullptr && editor->Visible();
        if (!deletesText && form().button("cmdDel").Enabled()) {
            cmdDel();
        }
    }
}

void frmCashFlow::closeRequested() { unload(); }

void frmCashFlow::eventFailed(const Error& error) {
    constexpr std::int32_t stopSign = 16;
    modPublic::ShowMessage(error.description(), stopSign, modPublic::GetText("Z7.CW.GL.CashFlow.00013"), "", 0);
}

// The close box executes cmdCancel in its query, which unloads by itself; this pass then continues with what
// remains.
void frmCashFlow::unload() {
    queryUnload();
    removeUnfinishedRows();
    ignoringErrors([&] {
        if (connection().State() != ObjectState::closed) {
            connection().Close();
        }
    });
    objCon_.reset();
    ignoringErrors([&] { form().unload(); });
}

void frmCashFlow::queryUnload() {
    if (!blnClosing_) {
        cmdCancel();
    }
    SaveMyColWidth(grid(), "frmCashFlow");
}

void frmCashFlow::removeUnfinishedRows() {
    ignoringErrors([&] {
        const std::int32_t lines = grid().Rows();
        for (std::int32_t line = 1; line < lines; ++line) {
            ignoringErrors([&] {
                const std::string key = grid().TextMatrix(line, 7);
                if (grid().TextMatrix(line, 1).empty() && !key.empty() && !blnCancelled_) {
                    collection().Remove(key);
                }
            });
        }
    });
}

} // namespace z7::cashflow
