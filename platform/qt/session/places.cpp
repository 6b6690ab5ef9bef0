#include "platform/qt/session/places.h"

#include <mntent.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "platform/framework/application.h"

namespace zephin {
namespace {

/// A list of bookmarks that is longer is not one that a person keeps.
constexpr qint64 kLongestList = 1 << 20;

/// Where desktops and administrators mount discs, cards and drives.
bool IsForVolumes(std::string_view place) {
  return place.starts_with("/media/") || place.starts_with("/run/media/") ||
         place.starts_with("/mnt/");
}

bool IsOnNetwork(std::string_view type) {
  return type.starts_with("nfs") || type.starts_with("cifs") || type.starts_with("smb") ||
         type.starts_with("fuse.sshfs") || type.starts_with("fuse.gvfs") || type == "9p";
}

QList<QUrl> Volumes() {
  struct Close {
    void operator()(std::FILE* table) const { endmntent(table); }
  };
  QList<QUrl> volumes;
  const std::unique_ptr<std::FILE, Close> table(setmntent("/proc/self/mounts", "re"));
  while (const mntent* entry = table ? getmntent(table.get()) : nullptr) {
    if (IsForVolumes(entry->mnt_dir) && !IsOnNetwork(entry->mnt_type)) {
      volumes.push_back(QUrl::fromLocalFile(QFile::decodeName(entry->mnt_dir)));
    }
  }
  return volumes;
}

QList<QUrl> Bookmarks() {
  const QString settings = QStandardPaths::writableLocation(QStandardPaths::ConfigLocation);
  QFile list(settings + QStringLiteral("/gtk-3.0/bookmarks"));
  return list.open(QIODevice::ReadOnly) ? BookmarksIn(list.read(kLongestList)) : QList<QUrl>();
}

QUrl Standard(QStandardPaths::StandardLocation place) {
  return QUrl::fromLocalFile(QStandardPaths::writableLocation(place));
}

QUrl Applications() {
  const std::string& path = Application::Current().Facts().applicationsFolder;
  return QUrl::fromLocalFile(QFile::decodeName(path.c_str()));
}

}  // namespace

QList<QUrl> PlacesOfUser() {
  const QList<QUrl> all =
      QList<QUrl>{Standard(QStandardPaths::HomeLocation), Standard(QStandardPaths::DesktopLocation),
                  Standard(QStandardPaths::DocumentsLocation), Applications()} +
      Volumes() + Bookmarks();
  QList<QUrl> places;
  // Desktop and documents may be the home itself, if the user has no such folders.
  for (const QUrl& place : all) {
    if (!places.contains(place) && QFileInfo(place.toLocalFile()).isDir()) {
      places.push_back(place);
    }
  }
  return places;
}

QList<QUrl> BookmarksIn(const QByteArray& list) {
  QList<QUrl> places;
  for (const QByteArray& line : list.split('\n')) {
    const QUrl address = QUrl::fromEncoded(line.split(' ').front().trimmed());
    if (address.isLocalFile()) {
      places.push_back(QUrl::fromLocalFile(QDir::cleanPath(address.toLocalFile())));
    }
  }
  return places;
}

}  // namespace zephin
