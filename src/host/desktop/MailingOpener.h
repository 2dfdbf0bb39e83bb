#pragma once

#include "host/mailing/window/MailingWindow.h"

#include <QObject>

#include <functional>
#include <memory>

namespace host {

struct Node;

/// The mailing window beside the main one: at most one, opened when it is first wanted.
class MailingOpener : public QObject {
  Q_OBJECT

 public:
  explicit MailingOpener(std::function<MailingContext()> context, QObject* parent = nullptr);

  /// Whether the node's records can be written to people: letters and sheets of labels.
  static bool IsFor(const Node& node);
  /// Shows the window in front of others; with the letter or sheet where the record is one.
  void Open(const Node* node, int id);
  /// False where the user keeps it.
  bool Close();

 private:
  std::function<MailingContext()> m_context;
  std::unique_ptr<MailingWindow> m_window;
};

}  // namespace host
