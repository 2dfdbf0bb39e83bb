#include "host/mailing/window/MailingRun.h"

#include <QThread>

#include <chrono>
#include <utility>

namespace host {

namespace {

constexpr std::chrono::milliseconds betweenLooks{100};

}  // namespace

MailingRun::MailingRun(QObject* parent) : QObject(parent), m_control(std::make_unique<RunControl>()) {
  m_look.setInterval(betweenLooks);
  connect(&m_look, &QTimer::timeout, this, [this] { Q_EMIT Progressed(m_control->Done(), m_control->Parts()); });
}

MailingRun::~MailingRun() {
  if (m_thread) {
    Cancel();
    m_thread->wait();
  }
}

void MailingRun::Cancel() {
  m_control->Cancel();
}

void MailingRun::Start(Work work) {
  m_control = std::make_unique<RunControl>();
  m_result = std::make_shared<RunResult>();
  m_error.reset();
  m_thread.reset(QThread::create([this, work = std::move(work)] {
    try {
      *m_result = work(*m_control);
    } catch (const std::exception&) {
      m_error = std::make_shared<automation::Error>(automation::CurrentError());
    }
  }));
  connect(m_thread.get(), &QThread::finished, this, &MailingRun::End);
  m_thread->start();
  m_look.start();
}

void MailingRun::End() {
  m_look.stop();
  m_thread->wait();
  m_thread.reset();
  if (const std::shared_ptr<automation::Error> error = std::exchange(m_error, nullptr)) {
    Q_EMIT Failed(*error);
  } else {
    const std::shared_ptr<RunResult> result = m_result;
    Q_EMIT Finished(*result);
  }
}

}  // namespace host
