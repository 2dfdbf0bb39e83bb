#pragma once

#include <QString>
#include <QStringList>

namespace host {

/// Which of these files others than the user may read, in words, with the command that ends it. A file is told about
/// once; the application's settings remember it. Empty when there is nothing to tell.
QString PermissionNotice(const QStringList& files);

}  // namespace host
