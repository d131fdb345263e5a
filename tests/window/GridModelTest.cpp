#include "adapters/wx/GridModel.h"
#include "adapters/wx/CellEditor.h"
#include "adapters/wx/twips.h"
#include "z7cashflow/support/Error.h"

#include <gtest/gtest.h>

namespace z7::cashflow::wx {
namespace {

constexpr std::array<std::int32_t, 8> noColors{0xFFFFFF, 0, 0, 0, 0, 0, 0, 0};

GridModel modelWithRows(std::int32_t dataRows) {
    GridModel model;
    model.cols(8);
    model.fixedRows(1);
    model.rows(1 + dataRows);
    return model;
}

TEST(GridModel, FirstDataRowBecomesTheCurrentOne) {
    GridModel model = modelWithRows(0);
    EXPECT_EQ(model.current().row, 0);
    EXPECT_FALSE(model.onDataRow());
    model.addRow("", noColors, std::nullopt);
    EXPECT_EQ(model.current().row, 1);
    model.addRow("", noColors, std::nullopt);
    EXPECT_EQ(model.current().row, 1);
}

TEST(GridModel, RowThatGoesLeavesItsNumberOrTheLastRow) {
    GridModel model = modelWithRows(3);
    model.currentRow(2);
    model.removeRow(2);
    EXPECT_EQ(model.current().row, 2);
    model.removeRow(2);
    EXPECT_EQ(model.current().row, 1);
    model.rows(1);
    EXPECT_EQ(model.current().row, 0);
}

TEST(GridModel, RowInsertedAtTheCurrentOneIsCurrent) {
    GridModel model = modelWithRows(2);
    model.text({2, 1}, "1002");
    model.currentRow(2);
    model.addRow("new", noColors, 2);
    EXPECT_EQ(model.text({model.current().row, 0}), "new");
    EXPECT_EQ(model.text({3, 1}), "1002");
    EXPECT_TRUE(model.changed(2));
    EXPECT_FALSE(model.changed(3));
    EXPECT_EQ(model.color({2, 0}), 0xFFFFFF);
    EXPECT_EQ(model.color({2, 1}), std::nullopt);
}

TEST(GridModel, CellOutsideTheGridIsAnError) {
    GridModel model = modelWithRows(1);
    const auto numberOf = [](const auto& action) {
        try {
            action();
        } catch (const Error& error) {
            return error.number();
        }
        return 0;
    };
    EXPECT_EQ(numberOf([&] { model.currentRow(2); }), errors::badIndex);
    EXPECT_EQ(numberOf([&] { model.currentCol(8); }), errors::badIndex);
    EXPECT_EQ(numberOf([&] { model.text({-1, 0}, ""); }), errors::badIndex);
    EXPECT_EQ(numberOf([&] { model.removeRow(2); }), errors::badIndex);
    EXPECT_EQ(numberOf([&] { model.addRow("", noColors, 3); }), errors::badIndex);
    EXPECT_EQ(numberOf([&] { model.addRow("", noColors, 0); }), errors::badIndex);
    EXPECT_EQ(numberOf([&] { model.rows(-1); }), errors::badIndex);
    EXPECT_EQ(model.rows(), 2);
}

TEST(GridModel, CellsFilledByTheSystemAndHiddenColumnsAreNotEdited) {
    GridModel model = modelWithRows(2);
    model.systemColor(0xE8E8E8);
    for (const std::int32_t col : {0, 2, 5}) {
        model.color({1, col}, 0xE8E8E8);
        model.color({2, col}, 0xE8E8E8);
    }
    model.column(7).width = 0;
    EXPECT_FALSE(model.editable({0, 1}));
    EXPECT_FALSE(model.editable({1, 0}));
    EXPECT_FALSE(model.editable({1, 7}));
    EXPECT_FALSE(model.editable({3, 1}));
    EXPECT_EQ(model.nextEditable({1, 1}), (CellPlace{1, 3}));
    EXPECT_EQ(model.nextEditable({1, 6}), (CellPlace{2, 1}));
    EXPECT_EQ(model.nextEditable({2, 6}), std::nullopt);
    EXPECT_EQ(model.previousEditable({2, 1}), (CellPlace{1, 6}));
    EXPECT_EQ(model.previousEditable({1, 1}), std::nullopt);
}

TEST(CellEditor, NumberHasASignDigitsCommasAndItsDecimals) {
    for (const wchar_t* good : {L"", L"-", L"12", L"1,234.00", L"-0.5", L".5", L","}) {
        EXPECT_TRUE(isBeginningOfNumber(good, 2)) << good;
    }
    for (const wchar_t* bad : {L"1.234", L"1.2.3", L"1-", L"x", L" 1", L"1.2,3", L"\uFF11"}) {
        EXPECT_FALSE(isBeginningOfNumber(bad, 2)) << bad;
    }
    EXPECT_FALSE(isBeginningOfNumber(L"1.", 0));
}

TEST(Twips, PixelsAreTheNearestOnes) {
    EXPECT_EQ(toPixels(10125), 675);
    EXPECT_EQ(toPixels(1600), 107);
    EXPECT_EQ(toPixels(0), 0);
    EXPECT_EQ(toTwips(107), 1605);
}

} // namespace
} // namespace z7::cashflow::wx
