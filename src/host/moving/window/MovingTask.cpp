#include "host/moving/window/MovingTask.h"

#include <QThread>

#include <chrono>
#include <utility>

namespace host {

namespace {

constexpr std::chrono::milliseconds betweenLooks{100};

}  // namespace

void TaskControl::Tell(moving::ImportStep step, qint64 done, qint64 total) {
  m_step = step;
  m_done = done;
  m_total = total;
}

MovingTask::MovingTask(QObject* parent) : QObject(parent) {
  m_look.setInterval(betweenLooks);
  connect(&m_look, &QTimer::timeout, this,
          [this] { Q_EMIT Progressed(m_control->Step(), m_control->Done(), m_control->Total()); });
}

MovingTask::~MovingTask() {
  if (m_thread) {
    m_control->Cancel();
    m_thread->wait();
  }
}

void MovingTask::Start(Work work) {
  if (m_thread) {
    m_control->Cancel();
    m_next = std::move(work);
  } else {
    Run(std::move(work));
  }
}

void MovingTask::Cancel() {
  m_next = nullptr;
  if (m_thread) {
    m_control->Cancel();
  }
}

void MovingTask::Run(Work work) {
  m_control = std::make_shared<TaskControl>();
  m_result = std::make_shared<Result>();
  m_thread.reset(QThread::create([control = m_control, result = m_result, work = std::move(work)] {
    try {
      result->done = work(*control);
    } catch (const std::exception&) {
      result->error = std::make_unique<automation::Error>(automation::CurrentError());
    }
  }));
  connect(m_thread.get(), &QThread::finished, this, &MovingTask::End);
  m_thread->start();
  m_look.start();
}

void MovingTask::End() {
  m_look.stop();
  m_thread->wait();
  m_thread.reset();
  const std::shared_ptr<Result> result = std::exchange(m_result, nullptr);
  if (m_next) {
    Run(std::exchange(m_next, nullptr));
    return;
  }
  Q_EMIT Ended();
  if (result->error) {
    Q_EMIT Failed(*result->error);
  } else if (result->done) {
    result->done();
  }
}

}  // namespace host
