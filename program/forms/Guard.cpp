#include "program/forms/Guard.h"

#include <new>

#include "program/forms/Dialogs.h"
#include "program/forms/Strings.h"
#include "zorvane/platform/Error.h"

namespace zorvane {
namespace {

void Show(QWidget* owner, const Error& error) {
    QString message = QStringLiteral("Run-time error %1").arg(error.Number);
    if (!error.Source.Empty()) message += QStringLiteral("\n") + ToQString(error.Source);
    message += QStringLiteral("\n\n") + ToQString(error.Description);
    Dialogs::Current().Message(owner, QStringLiteral("Zorvane"), message, Dialogs::Kind::Failure);
}

}  // namespace

void RunGuarded(QWidget* owner, const std::function<void()>& handler) {
    constexpr std::int32_t kOutOfMemory = 7;
    constexpr std::int32_t kInternal = 51;
    try {
        handler();
    } catch (const Error& error) {
        Show(owner, error);
    } catch (const std::bad_alloc&) {
        Show(owner, Error(kOutOfMemory, Text(), u"Out of memory"));
    } catch (const std::exception& fault) {
        // The toolkit's loops cannot carry an exception further.
        Show(owner, Error(kInternal, u"Internal error", Text(fault.what())));
    }
}

}  // namespace zorvane
