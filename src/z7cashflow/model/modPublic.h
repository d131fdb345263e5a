#pragma once

#include "z7cashflow/ports/ConnectionFactory.h"
#include "z7cashflow/ports/DialogFactory.h"
#include "z7cashflow/ports/MessageBox.h"
#include "z7cashflow/ports/Z7Login.h"
#include "z7cashflow/statements/LiteralPolicy.h"
#include "z7cashflow/support/Reason.h"
#include "z7cashflow/support/Variant.h"
#include "z7cashflow/support/guid.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

class CashFlow;
struct ItemSource;

} // namespace z7::cashflow

namespace z7::cashflow::modPublic {

/// What the thread knows of its user and of the voucher on the screen. Some members affect later calls: the year
/// override, bCashCode and bAutoDisplay keep their values until they are set again.
struct Context {
    std::shared_ptr<Z7Login> login;                           ///< the user's login; a null pointer until it is set
    std::shared_ptr<TextLookup> textLookup;                   ///< taken from the login when it is set
    std::shared_ptr<FormattedTextLookup> formattedTextLookup; ///< taken from the login when it is set
    /// Which values may be inserted into statements; taken from the login when it is set.
    statements::LiteralPolicy literalPolicy = statements::LiteralPolicy::asGiven;
    std::shared_ptr<MessageBox> messageBoxObject; ///< created by the first message and kept
    std::int16_t yearOverride = 0;                ///< accounting year in place of the login's, such as 2013; 0 for none

    std::int16_t VouchState = 0;  ///< state of the voucher on the screen; with 2 no stored rows are returned
    std::int16_t VouchIn = 0;     ///< kept for the host
    std::string CurUserName;      ///< the user at the screen
    std::string VouchBillName;    ///< the user who entered the voucher
    bool VouchEdit = false;       ///< whether another user's voucher may be edited
    bool VouchLockSucc = false;   ///< kept for the host
    bool bCashCode = false;       ///< rows belong to the lines of cash-flow accounts; else to the lines of all others
    bool bAutoDisplay = false;    ///< a generated row without an item is kept
    bool bXJLL = false;           ///< last value of the account option of that name; nothing reads it
    bool iUpdateCashFlow = false; ///< the operator's voucher option of that name

    /// Services outside the library, replaceable by hosts and tests. They are not part of the login.
    std::function<std::shared_ptr<MessageBox>()> createMessageBox; ///< makes messageBoxObject; none by default
    std::shared_ptr<ConnectionFactory> connectionFactory; ///< connections that the dialog opens itself; none by default
    std::shared_ptr<DialogFactory> dialogFactory;         ///< windows of the dialog; none by default
    GuidSource guidSource = systemGuidSource();           ///< random bytes of GetGUID
    std::function<void(const std::string&)> debugSink;    ///< takes debug texts; nowhere by default
    /// Called for each row that is created from stored rows or voucher lines, with the source of its item, as
    /// soon as the row is in its collection. It must not change anything; its exceptions pass to the caller.
    /// Empty by default.
    std::function<void(const CashFlow& row, const ItemSource& source)> itemObserver;
};

/// The calling thread's context. It lives as long as the thread, unless a host keeps contexts itself.
[[nodiscard]] Context& context() noexcept;

/// Returns the calling thread's context, always the same one until its owner destroys it.
using ContextStore = Context& (*)() noexcept;
/// Lets a host keep the contexts of all threads from now on, because it has to destroy them at a time of its choice,
/// such as before its plug-in is unloaded. It calls this before any thread has a context; a null pointer restores the
/// library's own store.
void keepContextsIn(ContextStore store) noexcept;

/// The user's login, or a null pointer if none was set on this thread.
[[nodiscard]] std::shared_ptr<Z7Login> GetLogin();

/// The user's login. Error 91 if none was set on this thread.
[[nodiscard]] Z7Login& requiredLogin();

/// Sets a login, its two text services and whether it guards statements. A null pointer leaves these three
/// unchanged. A failure of the login to return its services passes to the caller.
void SetLogin(std::shared_ptr<Z7Login> login);

/// The accounting year of year-bound statements: the override if there is one, otherwise the login's. Error 91
/// without a login, 13 or 6 if the login's year is not a 16-bit number and no override is set.
[[nodiscard]] std::int16_t GetIYear();

/// Sets the year override; 0 removes it.
void SetIYear(std::int16_t value);

/// The text of a resource key in the user's language. Never raises an error for an unknown key: the failure is
/// shown in a message box, and the text is empty. With arguments the formatted catalogue is used. Error 91 if not
/// even the box can be shown because there is no login.
[[nodiscard]] std::string GetText(const std::string& key, const std::vector<Variant>& arguments = {});

/// A word of direction ("借" debit, "贷" credit, "平" even) in the user's language; any other text unchanged.
/// Error 91 without a login.
[[nodiscard]] std::string DirectionText(const std::string& text);

/// Shows a message box and returns the answer (6 yes, 7 no). buttons holds the style bits of MessageBox::Show. If
/// the host creates no message boxes, the message is written to standard error, and the answer is "no" to a
/// question, otherwise 1. Error 91 without a login.
std::int32_t ShowMessage(const std::string& prompt, std::int32_t buttons, const std::string& title,
                         const std::string& helpFile, std::int32_t context);

/// A value as text for XML, with &, >, <, ' and " escaped; null becomes the empty text. Escapes that the text
/// already holds are not recognised.
[[nodiscard]] std::string XmlEscape(const Variant& value);
/// The same, appended to a text.
void appendXmlEscaped(std::string& out, const Variant& value);

/// Passes a text to the debug sink. It has no other effect; an Error of the sink is ignored.
void debugText(const std::string& text);

/// Raises an error with the source "CashFlow", and with a reason if the description is not specific enough.
[[noreturn]] void raiseCashFlowError(int number, const std::string& description, Explanation why = {});

} // namespace z7::cashflow::modPublic

Z7_PUBLIC_END
