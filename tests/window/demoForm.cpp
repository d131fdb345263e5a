// A form with the controls of the dialog and its own rules, for tests of the window alone: window_form [--read-only]
// [--rows N] [--items N] [--chinese]. It writes a line for each event of the window, in addition to the window's own
// state lines.

#include "adapters/wx/WindowSystem.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace z7::cashflow;

ControlDesign control(const std::string& name, ControlClass controlClass, std::int32_t left, std::int32_t top,
                      std::int32_t width, std::int32_t height, int tabOrder) {
    ControlDesign design;
    design.name = name;
    design.controlClass = controlClass;
    design.left = left;
    design.top = top;
    design.width = width;
    design.height = height;
    design.tabOrder = tabOrder;
    design.caption = name.substr(3);
    design.fontPoints = 9.0;
    design.foreColorFixed = static_cast<std::int32_t>(0x80000012);
    design.backColorFixed = static_cast<std::int32_t>(0x8000000F);
    return design;
}

FormDesign formDesign() {
    FormDesign design{"demo", "Demo", 10125, 5505, {}};
    design.controls.push_back(control("cmdOk", ControlClass::commandButton, 6340, 5040, 1125, 330, 3));
    design.controls.push_back(control("cmdAdd", ControlClass::commandButton, 2680, 5040, 1125, 330, 1));
    design.controls.push_back(control("cmdFail", ControlClass::commandButton, 3900, 5040, 1125, 330, 2));
    design.controls.push_back(control("SuperGrid1", ControlClass::superGrid, 120, 120, 9855, 4815, 0));
    design.controls.push_back(control("ZQKeyHookCtrl1", ControlClass::keyHook, 0, 0, 0, 0, -1));
    design.controls.push_back(control("ZQFrmCaptionMgr", ControlClass::frmCaption, 0, 0, 0, 0, -1));
    return design;
}

class Demo final : public FormEvents {
public:
    Demo(wx::WindowSystem& system, int items)
        : factory_(system.dialogFactory()), box_(system.messageBox()), items_(items) {}

    void show(int rows, bool readOnly) {
        form_ = factory_->createForm(formDesign(), *this);
        SuperGrid& grid = form_->grid("SuperGrid1");
        grid.Cols(8);
        grid.FixedRows(1);
        grid.Rows(1);
        grid.SetDefaultColor(gray);
        for (const auto& [col, width] : std::vector<std::pair<int, int>>{
                 {0, 3000}, {1, 1600}, {2, 500}, {3, 1500}, {4, 1200}, {5, 4000}, {6, 1000}, {7, 0}}) {
            grid.TextMatrix(0, col, "Column " + std::to_string(col));
            grid.ColWidth(col, static_cast<std::int16_t>(width));
        }
        grid.SetColumnEdit(1, 5, 1, 1, std::nullopt);
        grid.SetColumnEdit(3, 15, 2, 4, static_cast<std::int16_t>(2));
        grid.SetColumnEdit(4, 80, 1, 1, std::nullopt);
        for (int i = 0; i < rows; ++i) {
            add();
            for (const int col : {1, 3, 4}) {
                grid.TextMatrix(grid.Rows() - 1, col, std::to_string(100 * (i + 1) + col));
            }
        }
        if (rows > 0) {
            grid.Row(1);
        }
        grid.Col(readOnly ? 1 : 4);
        grid.GridReadOnly(readOnly);
        form_->button("cmdFail").Enabled(!readOnly);
        form_->frmCaption("ZQFrmCaptionMgr").caption("Demo form");
        form_->showModal();
        std::cout << "END width=" << grid.ColWidth(1) << '|' << grid.ColWidth(2) << std::endl;
        form_.reset();
    }

    void BeforeEdit(bool& cancel, std::int32_t column) override {
        tell("BeforeEdit " + std::to_string(column));
        cancel = column == 6;
    }
    void CellValidate(std::string& text, std::int32_t& cancel, std::int32_t row, std::int32_t col) override {
        tell("CellValidate " + std::to_string(row) + "," + std::to_string(col) + " " + text);
        if (col == 3 && leadingNumber(text) == 0.0) {
            notice("Not an amount");
            cancel = 1;
        }
        if (text == "error") {
            throw Error(13, "demo", "The event failed");
        }
    }
    void RowValidate(std::int32_t& cancel, std::int32_t row, std::int32_t& col) override {
        tell("RowValidate " + std::to_string(row));
        if (grid().TextMatrix(row, 1).empty()) {
            notice("No account");
            cancel = 1;
            col = 1;
        }
    }
    void ReferenceClick(std::string& text, std::int32_t row, std::int32_t col) override {
        tell("ReferenceClick " + std::to_string(row) + "," + std::to_string(col) + " " + text);
        grid().Col(col);
        std::vector<std::vector<std::string>> rows;
        for (int i = 1; i <= items_; ++i) {
            rows.push_back({std::to_string(i), "Item number " + std::to_string(i)});
        }
        const auto picked =
            factory_->createPickList()->pick("Items", {{"Code", 1200, false}, {"Name", 4000, false}}, rows);
        if (picked) {
            text = rows[*picked][0];
        }
    }
    void AppendRow() override {
        tell("AppendRow");
        if (grid().Rows() < 4) {
            add();
            grid().Row(grid().Rows() - 1);
            grid().Col(1);
        }
    }
    void click(const std::string& button) override {
        tell("click " + button);
        if (button == "cmdAdd") {
            add();
            grid().Row(grid().Rows() - 1);
            grid().Col(1);
        } else if (button == "cmdFail") {
            throw Error(13, "demo", "The event failed");
        } else if (grid().FinishEdit() == 2) {
            form_->unload();
        } else {
            grid().SetFocus();
            form_->sendKeys(" ");
        }
    }
    void keyDown(std::int32_t& keyCode, std::int32_t shift) override {
        tell("keyDown " + std::to_string(keyCode) + " " + std::to_string(shift));
        if (keyCode == 46 && !grid().ActiveEditor()->Visible() && grid().Row() > 0) {
            grid().RemoveItem(grid().Row());
        }
    }
    void closeRequested() override {
        tell("closeRequested");
        if (box_->Show("Close?", 292, "Demo", "", 0) == 6) {
            form_->unload();
        }
    }
    void eventFailed(const Error& error) override {
        tell("eventFailed " + error.description());
        box_->Show(error.description(), 16, "Demo", "", 0);
    }

private:
    static constexpr std::int32_t gray = 0xE8E8E8;

    SuperGrid& grid() { return form_->grid("SuperGrid1"); }
    static void tell(const std::string& event) { std::cout << "EVENT " << event << std::endl; }
    void notice(const std::string& text) { box_->Show(text, 64, "Demo", "", 0); }
    void add() {
        grid().AddItem("", {0xFFFFFF, 0, 0, 0, 0, 0, 0, 0}, std::nullopt);
        for (const int col : {0, 2, 5}) {
            grid().SetCellColor(grid().Rows() - 1, col, gray);
        }
    }

    std::shared_ptr<DialogFactory> factory_;
    std::shared_ptr<MessageBox> box_;
    std::unique_ptr<DialogForm> form_;
    int items_;
};

} // namespace

int main(int argc, char** argv) {
    bool readOnly = false;
    bool chinese = false;
    int rows = 2;
    int items = 50;
    for (int i = 1; i < argc; ++i) {
        const std::string option = argv[i];
        readOnly = readOnly || option == "--read-only";
        chinese = chinese || option == "--chinese";
        if (option == "--rows" && i + 1 < argc) {
            rows = std::stoi(argv[++i]);
        } else if (option == "--items" && i + 1 < argc) {
            items = std::stoi(argv[++i]);
        }
    }
    const auto system = wx::WindowSystem::start(&std::cout);
    if (!system) {
        std::cout << "NOSCREEN" << std::endl;
        return 1;
    }
    system->messageBox()->locale(chinese ? "2052" : "1033");
    Demo(*system, items).show(rows, readOnly);
    return 0;
}
