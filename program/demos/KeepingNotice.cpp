#include "program/demos/KeepingNotice.h"

#include "program/demos/PropBagSession.h"

namespace zorvane {
namespace {

using Obstacle = PropBagSession::Obstacle;

KeepingNotice WithoutPath(const PropBagSession& session) {
    switch (session.Keeping()) {
        case Obstacle::None:
            break;
        case Obstacle::Folder:
            return {u"Settings cannot be kept here.", u"The program's folder cannot be written."};
        case Obstacle::ReadOnly:
            return {u"Settings cannot be kept: read-only.",
                    u"The file beside the program that keeps them may not be written."};
        case Obstacle::IsFolder:
            return {u"Settings cannot be kept: a folder.",
                    u"A folder has the name of the file that keeps them."};
        case Obstacle::NoFile:
            return {u"Settings cannot be kept: no file.",
                    u"What has the name of the file that keeps them is a device."};
        case Obstacle::Unreadable:
            return {u"Settings cannot be read.",
                    u"The file beside the program that keeps them may not be read."};
        case Obstacle::Foreign:
            return {u"Old settings could not be read.",
                    u"The file that keeps them holds something else. New ones will be kept there."};
        case Obstacle::Full:
            return {u"Settings were not kept: disk full.",
                    u"There was no room for the file that keeps them when a window closed."};
        case Obstacle::Busy:
            return {u"Settings were not kept: file in use.",
                    u"Another program had the file that keeps them when a window closed."};
        case Obstacle::Refused:
            return {u"Settings were not kept: no permission.",
                    u"The file that keeps them might not be written when a window closed."};
        case Obstacle::Failed:
            return {u"Settings were not kept.", Text(u"When a window closed, the system said: ") +
                                                    Text(session.Failure().message())};
    }
    return {};
}

}  // namespace

KeepingNotice NoticeOf(const PropBagSession& session) {
    KeepingNotice notice = WithoutPath(session);
    if (!notice.Line.Empty()) {
        notice.Reason = notice.Reason + Text(u"\n") + Text(session.Path().string());
    }
    return notice;
}

}  // namespace zorvane
