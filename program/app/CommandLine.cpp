#include "program/app/CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <cstdio>

#include "program/app/Version.h"
#include "program/forms/Strings.h"

namespace zorvane {
namespace {

constexpr char kHelp[] =
    "usage: zorvane [<option>]...\n"
    "\n"
    "Opens a window from which three demonstrations are reached: a key list, a timing\n"
    "comparison of containers, and windows that come back as they were left.\n"
    "\n"
    "  -h, --help     print this and end\n"
    "  -v, --version  print the version and end\n"
    "\n"
    "The toolkit takes options of its own, such as -style fusion or -platform wayland.\n";

// What the toolkit and its platforms take for themselves, each with one dash or two.
constexpr const char* kWithValue[] = {
    "display",       "geometry",           "icon",        "name",
    "platform",      "platformpluginpath", "plugin",      "session",
    "style",         "stylesheet",         "title",       "platformtheme",
    "qmljsdebugger", "qwindowgeometry",    "qwindowicon", "qwindowtitle"};
constexpr const char* kWithoutValue[] = {"dograb", "nograb", "reverse", "testability",
                                         "widgetcount"};

// The option as it was typed, which the parser gives without its dashes.
QString Typed(const QStringList& arguments, const QString& name) {
    for (const QString& argument : arguments) {
        const QString option = argument.section(QLatin1Char('='), 0, 0);
        if (option.startsWith(QLatin1Char('-')) && option.endsWith(name)) return option;
    }
    return name;
}

// What is wrong; nothing where all is well.
QString Complaint(QCommandLineParser& parser, const QStringList& arguments) {
    const bool understood = parser.parse(arguments);
    const QStringList unknown = parser.unknownOptionNames();
    if (!unknown.empty()) {
        return QStringLiteral("unknown option %1").arg(Typed(arguments, unknown.front()));
    }
    if (!understood) return parser.errorText();
    const QStringList words = parser.positionalArguments();
    return words.empty() ? QString() : QStringLiteral("surplus word %1").arg(words.front());
}

}  // namespace

CommandLine ReadCommandLine(int argc, char** argv) {
    const QCoreApplication decoding(argc, argv);  // makes texts of what the system hands over
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption version(QStringList{QStringLiteral("v"), QStringLiteral("version")});
    parser.addOptions({help, version});
    for (const char* name : kWithValue) {
        parser.addOption(QCommandLineOption(QLatin1String(name), {}, QStringLiteral("value")));
    }
    for (const char* name : kWithoutValue)
        parser.addOption(QCommandLineOption(QLatin1String(name)));

    const QString complaint = Complaint(parser, QCoreApplication::arguments());
    if (!complaint.isEmpty()) {
        std::fprintf(stderr, "zorvane: %s (zorvane --help shows how it is called)\n",
                     qUtf8Printable(complaint));
        return {2};
    }
    if (parser.isSet(help)) {
        std::fputs(kHelp, stdout);
        return {0};
    }
    if (parser.isSet(version)) {
        std::puts(ProgramVersion().ToUtf8().c_str());
        return {0};
    }
    return {{}, parser.isSet(QStringLiteral("platform"))};
}

}  // namespace zorvane
