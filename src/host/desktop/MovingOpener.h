#pragma once

class QString;
class QWidget;

namespace host {

struct Session;

/// Shows the assistant that brings files of other programs in. True where it brought something.
bool BringFileIn(const Session& session, const QString& connectionString, QWidget* parent);

}  // namespace host
