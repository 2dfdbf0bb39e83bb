#include "host/desktop/MailingOpener.h"

#include "host/records/NodeCatalog.h"
#include "platform/contract/cConstNodo.h"

#include <utility>

namespace host {

MailingOpener::MailingOpener(std::function<MailingContext()> context, QObject* parent)
    : QObject(parent), m_context(std::move(context)) {}

bool MailingOpener::IsFor(const Node& node) {
  return node.id == cConstNodo().CartasModelo() || node.id == cConstNodo().Etiquetas();
}

void MailingOpener::Open(const Node* node, int id) {
  // One that was closed begins anew, with what the database holds now.
  if (!m_window || !m_window->isVisible()) {
    m_window = std::make_unique<MailingWindow>(m_context());
  }
  if (node != nullptr && IsFor(*node)) {
    const bool isLetter = node->id == cConstNodo().CartasModelo();
    m_window->Open(isLetter ? MailingWindow::Page::Letters : MailingWindow::Page::Labels, id);
  }
  m_window->show();
  m_window->raise();
  m_window->activateWindow();
}

bool MailingOpener::Close() {
  return !m_window || m_window->close();
}

}  // namespace host
