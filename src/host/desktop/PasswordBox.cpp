#include "host/desktop/PasswordBox.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QThread>
#include <QVBoxLayout>

#include <termios.h>
#include <unistd.h>

#include <cstdio>
#include <string>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString Question(const QString& shown, bool isRepeated) {
  const QString question = u"Contraseña para la base de datos «%1»:"_s.arg(shown);
  return isRepeated ? u"El servidor no ha aceptado la contraseña. "_s + question : question;
}

// What is typed shows nowhere while this lives.
class Unseen {
 public:
  Unseen() {
    tcgetattr(STDIN_FILENO, &m_before);
    termios unseen = m_before;
    unseen.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &unseen);
  }
  Unseen(const Unseen&) = delete;
  Unseen& operator=(const Unseen&) = delete;
  ~Unseen() { tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_before); }

 private:
  termios m_before{};
};

}  // namespace

// A thread that reads beside the window has nobody to ask; the window's own connection has asked before.
std::optional<QString> AskPasswordInBox(const QString& shown, bool isRepeated) {
  if (QThread::currentThread() != QCoreApplication::instance()->thread()) {
    return std::nullopt;
  }
  QDialog box(QApplication::activeModalWidget());
  box.setObjectName(u"passwordBox"_s);
  box.setWindowTitle(u"Kel"_s);
  auto* label = new QLabel(Question(shown, isRepeated), &box);
  label->setTextFormat(Qt::PlainText);
  auto* password = new QLineEdit(&box);
  password->setObjectName(u"txtPassword"_s);
  password->setAccessibleName(u"Contraseña"_s);
  password->setEchoMode(QLineEdit::Password);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &box);
  buttons->button(QDialogButtonBox::Ok)->setText(u"&Aceptar"_s);
  buttons->button(QDialogButtonBox::Cancel)->setText(u"&Cancelar"_s);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &box, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &box, &QDialog::reject);
  auto* layout = new QVBoxLayout(&box);
  layout->addWidget(label);
  layout->addWidget(password);
  layout->addWidget(buttons);
  return box.exec() == QDialog::Accepted ? std::optional(password->text()) : std::nullopt;
}

std::optional<QString> ReadUnseen(const QString& question) {
  std::fprintf(stderr, "%s ", qUtf8Printable(question));
  const Unseen unseen;
  std::string answer;
  for (int c = std::getchar(); c != '\n' && c != EOF; c = std::getchar()) {
    answer += static_cast<char>(c);
  }
  std::fputc('\n', stderr);
  return answer.empty() ? std::nullopt : std::optional(QString::fromLocal8Bit(answer.c_str()));
}

std::optional<QString> AskPasswordOnTerminal(const QString& shown, bool isRepeated) {
  return isatty(STDIN_FILENO) == 0 ? std::nullopt : ReadUnseen(Question(shown, isRepeated));
}

}  // namespace host
