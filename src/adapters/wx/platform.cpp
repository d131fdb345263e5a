#include "adapters/wx/platform.h"

#include <wx/dialog.h>
#include <wx/window.h>

#include <gtk/gtk.h>

namespace z7::cashflow::wx {

void claimModule() {}

void makeCompact(wxWindow& control) {
    GtkWidget* const widget = control.GetHandle();
    GtkCssProvider* const provider = gtk_css_provider_new();
    gtk_css_provider_load_from_data(provider,
                                    "button{padding:0 1px;min-height:0;min-width:0;border-radius:2px;}"
                                    "entry{padding:0 2px;min-height:0;border-radius:0;}",
                                    -1, nullptr);
    gtk_style_context_add_provider(gtk_widget_get_style_context(widget), GTK_STYLE_PROVIDER(provider),
                                   GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    g_object_unref(provider);
}

void accessibleName(wxWindow& control, const wxString& name) {
    atk_object_set_name(gtk_widget_get_accessible(control.GetHandle()), name.utf8_str());
}

void showOnScrolled(wxWindow& control, bool show) {
    gtk_widget_set_child_visible(control.GetHandle(), show ? TRUE : FALSE);
}

void keepScrollBars(wxWindow& window) {
    GtkWidget* const widget = window.GetHandle();
    if (GTK_IS_SCROLLED_WINDOW(widget) != FALSE) {
        gtk_scrolled_window_set_overlay_scrolling(GTK_SCROLLED_WINDOW(widget), FALSE);
    }
}

wxString activeTitle() {
    wxString title;
    GList* const windows = gtk_window_list_toplevels();
    for (const GList* at = windows; at != nullptr; at = at->next) {
        GtkWindow* const window = GTK_WINDOW(at->data);
        if (gtk_window_is_active(window) != FALSE && gtk_widget_get_visible(GTK_WIDGET(window)) != FALSE) {
            const char* const text = gtk_window_get_title(window);
            title = wxString::FromUTF8(text == nullptr ? "" : text);
        }
    }
    g_list_free(windows);
    return title;
}

void passEndOfLoopOn() {}

Owner::Owner(wxDialog& dialog, const std::function<void()>& /*onDestroyed*/) { dialog.Centre(); }

Owner::~Owner() = default;

void Owner::unlock() noexcept {}

} // namespace z7::cashflow::wx
