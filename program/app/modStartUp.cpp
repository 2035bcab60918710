#include "program/app/modStartUp.h"

#include "program/app/FrmMainDemo.h"
#include "program/app/ProgramFolder.h"
#include "program/app/StateFolder.h"
#include "program/app/frmSplash.h"

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

std::filesystem::path BagFile() {
    std::filesystem::path file = StateFolder(ProgramFolder());
    // Kept: nothing is stripped, so a directory that ends in a separator gets a second one.
    file += std::filesystem::path::preferred_separator;
    return file += "PropBag.dat";
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
