#include "z7cashflow/dialog/frmCashFlow.h"
#include "z7cashflow/model/filled.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/statements/dialogStatements.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

// The widths of the grid's columns, shared by all users of one language.

namespace z7::cashflow {

namespace {

constexpr std::int16_t gridMode = 10;
constexpr double tolerance = 60.0; // twips
constexpr std::int32_t yesNoDefaultNo = 260;
constexpr std::int32_t answerNo = 7;

std::string locale() { return toText(modPublic::requiredLogin().LocaleId()); }

} // namespace

std::int16_t frmCashFlow::ArrayUpper(const Widths& widths) {
    return toInt16(widths.empty() ? 0.0 : static_cast<double>(widths.size() - 1));
}

void frmCashFlow::LoadMyColWidth(SuperGrid& cells, const std::string& name) {
    ignoringErrors([&] {
        Widths widths;
        bool found = false;
        ReadMyColWidth(name, gridMode, widths, found);
        if (found) {
            const std::int32_t columns = cells.Cols();
            for (std::int32_t col = 0; col < columns; ++col) {
                cells.ColWidth(col, widths.at(static_cast<std::size_t>(col)));
            }
        }
    });
}

// Records are counted from the first one, whatever column they name; columns without a record get the width 0.
void frmCashFlow::ReadMyColWidth(const std::string& name, std::int16_t mode, Widths& widths, bool& found) {
    constexpr std::int32_t leastUpper = 100;
    found = true;
    const auto stored = connection().Execute(filled(statements::widthsToShow, name, mode, locale()));
    if (stored->atEnd()) {
        found = false;
        return;
    }
    const std::int32_t upper = std::max({std::int32_t{ArrayUpper(widths)}, stored->RecordCount(), leastUpper});
    widths.resize(static_cast<std::size_t>(upper) + 1);
    for (std::size_t i = 0; !stored->atEnd(); ++i, stored->MoveNext()) {
        widths.at(i) = toInt16(stored->Fields().Item("ilength"));
    }
    stored->Close();
}

void frmCashFlow::SaveMyColWidth(SuperGrid& cells, const std::string& name) {
    ignoringErrors([&] {
        const std::int32_t columns = cells.Cols();
        if (columns == 0) {
            return;
        }
        Widths widths;
        for (std::int32_t col = 0; col < columns; ++col) {
            widths.push_back(cells.ColWidth(col));
        }
        WriteMyColWidth(name, gridMode, widths);
    });
}

// Widths that were never stored, or that belong to other columns, are written without a question; small changes are
// not written at all.
bool frmCashFlow::shouldWrite(const std::string& name, std::int16_t mode, const Widths& widths) {
    const auto stored = connection().createRecordset();
    stored->CursorLocation(CursorLocation::client);
    stored->Open(filled(statements::widthsToCompare, name, mode, locale()), &connection(), CursorType::dynamic,
                 LockType::optimistic);
    if (stored->atEnd() || stored->RecordCount() != static_cast<std::int32_t>(widths.size())) {
        return true;
    }
    bool differs = false;
    for (const std::int16_t width : widths) {
        if (std::fabs(width - toDouble(stored->Fields().Item("ilength"))) > tolerance) {
            differs = true;
            break;
        }
        stored->MoveNext();
    }
    if (differs && modPublic::ShowMessage(modPublic::GetText("Z7.GL.USZZPUB.00571", {""}), yesNoDefaultNo,
                                          modPublic::GetText("Z7.GL.USZZPUB.00004"), "", 0) == answerNo) {
        return false;
    }
    stored->Close();
    return differs;
}

void frmCashFlow::WriteMyColWidth(const std::string& name, std::int16_t mode, const Widths& widths) {
    if (!shouldWrite(name, mode, widths)) {
        return;
    }
    try {
        connection().BeginTrans();
        connection().Execute(filled(statements::widthsDelete, name, mode, locale()));
        std::int32_t column = 0;
        for (const std::int16_t width : widths) {
            connection().Execute(filled(statements::widthInsert, name, mode, column++, width, locale()));
        }
        connection().CommitTrans();
    } catch (const Error& failure) {
        modPublic::ShowMessage(std::to_string(failure.number()) + "  " + failure.description(), 0,
                               modPublic::GetText("Z7.GL.USZZPUB.00004"), "", 0);
        connection().RollbackTrans(); // also fails if no transaction has begun, which does not matter
    }
}

} // namespace z7::cashflow
