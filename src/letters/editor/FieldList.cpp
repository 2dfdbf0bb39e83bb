#include "letters/editor/FieldList.h"

#include "letters/editor/FieldMenu.h"
#include "platform/text/FoldForSearch.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace letters {

namespace {

constexpr int widthInCharacters = 52;
constexpr int heightInLines = 18;

}  // namespace

FieldList::FieldList(FieldMenu& menu, QWidget* parent)
    : QFrame(parent, Qt::Popup), m_menu(menu), m_words(new QLineEdit(this)), m_fields(new QListWidget(this)) {
  setObjectName(u"lstCampos"_s);
  setFrameStyle(QFrame::StyledPanel);
  m_words->setObjectName(u"txtCampo"_s);
  m_words->setPlaceholderText(u"Escriba parte del nombre del campo"_s);
  m_words->setAccessibleName(m_words->placeholderText());
  m_words->installEventFilter(this);
  m_fields->setObjectName(u"lisCampos"_s);
  m_fields->setFocusPolicy(Qt::NoFocus);
  m_fields->setAccessibleName(u"Campos"_s);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_words);
  layout->addWidget(m_fields);
  connect(m_words, &QLineEdit::textChanged, this, &FieldList::Filter);
  connect(m_words, &QLineEdit::returnPressed, this, &FieldList::Choose);
  connect(m_fields, &QListWidget::itemClicked, this, &FieldList::Choose);
}

void FieldList::Open(const QPoint& at) {
  Fill();
  resize(fontMetrics().averageCharWidth() * widthInCharacters, fontMetrics().lineSpacing() * heightInLines);
  const QRect room = screen()->availableGeometry();
  move(std::clamp(at.x(), room.left(), std::max(room.left(), room.right() - width())),
       std::clamp(at.y(), room.top(), std::max(room.top(), room.bottom() - height())));
  show();
  m_words->setFocus();
}

void FieldList::Fill() {
  m_fields->clear();
  for (QAction* field : m_menu.Fields()) {
    const auto* menu = static_cast<QMenu*>(field->parent());
    const QString group = menu == &m_menu ? QString() : menu->title() + u": "_s;
    auto* item = new QListWidgetItem(group + field->text(), m_fields);
    item->setData(Qt::UserRole, QVariant::fromValue(field));
  }
  m_words->clear();
  Filter();
}

void FieldList::Filter() {
  const QStringList words = texts::FoldForSearch(m_words->text()).split(u' ', Qt::SkipEmptyParts);
  for (int row = 0; row < m_fields->count(); ++row) {
    const QString name = texts::FoldForSearch(m_fields->item(row)->text());
    m_fields->item(row)->setHidden(
        !std::all_of(words.begin(), words.end(), [&](const QString& word) { return name.contains(word); }));
  }
  m_fields->setCurrentRow(-1);
  Move(1);
}

// To the next item that is shown; stays where there is none.
void FieldList::Move(int items) {
  for (int row = m_fields->currentRow() + items; row >= 0 && row < m_fields->count(); row += items) {
    if (!m_fields->item(row)->isHidden()) {
      m_fields->setCurrentRow(row);
      return;
    }
  }
}

void FieldList::Choose() {
  const QListWidgetItem* item = m_fields->currentItem();
  if (item == nullptr || item->isHidden()) {
    return;
  }
  auto* field = item->data(Qt::UserRole).value<QAction*>();
  close();
  field->trigger();
}

bool FieldList::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Down || key == Qt::Key_Up) {
      Move(key == Qt::Key_Down ? 1 : -1);
      return true;
    }
    if (key == Qt::Key_Escape) {
      close();
      return true;
    }
  }
  return QFrame::eventFilter(watched, event);
}

}  // namespace letters
