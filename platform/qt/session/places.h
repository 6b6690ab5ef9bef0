#ifndef PLATFORM_QT_SESSION_PLACES_H_
#define PLATFORM_QT_SESSION_PLACES_H_

#include <QByteArray>
#include <QList>
#include <QUrl>

// The folders that a user goes to first, for the side bar of the folder dialog.

namespace zephin {

/// The user's home, desktop and documents, the Applications folder, mounted volumes, and the
/// bookmarks of other programs' dialogs, in this order. Each exists, and is in the list once.
/// Network volumes are missing, unless they are bookmarks: a server that is away would block the
/// dialog.
QList<QUrl> PlacesOfUser();

/// The folders in a list of bookmarks, which has one on each line: an address, and after a space
/// the name that the user has given it. Only addresses of local files count:
///
///     file:///home/ann/Old%20games Games
QList<QUrl> BookmarksIn(const QByteArray& list);

}  // namespace zephin

#endif  // PLATFORM_QT_SESSION_PLACES_H_
