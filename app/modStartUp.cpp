#include "app/modStartUp.h"

#include "app/FrmMainDemo.h"
#include "app/frmSplash.h"

namespace zorvane::modStartUp {
namespace {

// The window that a tagged variable refers to.
Form& Window(const Variant& variable) {
    return dynamic_cast<Form&>(variable.TheObject());
}

}  // namespace

void Main() {
    Variant mainWindow = MakeObject<FrmMainDemo>();
    Window(mainWindow).Load();
    {
        const Variant splash = MakeObject<frmSplash>();
        splash.TheObject().Set(u"CloseVisible", true);
        Window(splash).ShowModal(&Window(mainWindow));
    }
    Window(mainWindow).ShowModal();
    mainWindow = Variant();
}

}  // namespace zorvane::modStartUp
