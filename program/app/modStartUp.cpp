#include "program/app/modStartUp.h"

#include <QCoreApplication>

#include "program/app/FrmMainDemo.h"
#include "program/app/StateFolder.h"
#include "program/app/frmSplash.h"
#include "program/forms/Strings.h"

namespace zorvane::modStartUp {
namespace {

// The window that a tagged variable refers to.
Form& Window(const Variant& variable) {
    return dynamic_cast<Form&>(variable.TheObject());
}

}  // namespace

PropBagSession& BagSession() {
    static PropBagSession session;
    return session;
}

Text BagFile() {
    // Kept: nothing is stripped, so a directory that ends in a separator gets a second one.
    return ToText(StateFolder(QCoreApplication::applicationDirPath())) + Text(u"/PropBag.dat");
}

void LoadBag() {
    BagSession().Load(BagFile());
}

void SaveBag() {
    BagSession().Save(BagFile());
}

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
