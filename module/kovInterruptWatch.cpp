#include "module/kovInterruptWatch.h"

#include <atomic>
#include <csignal>

namespace {

// All a signal handler may touch.
std::atomic<bool> g_interrupted { false };

const int kPollMs = 50;

#ifdef Q_OS_UNIX
struct sigaction g_previousInt;
struct sigaction g_previousTerm;

void onSignal(int)
{
  g_interrupted = true;
}
#endif

} // namespace

kovInterruptWatch::kovInterruptWatch()
{
  g_interrupted = false;
#ifdef Q_OS_UNIX
  struct sigaction action = {};
  action.sa_handler = onSignal;
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, &g_previousInt);
  sigaction(SIGTERM, &action, &g_previousTerm);
#endif
  connect(&m_poll, &QTimer::timeout, this, [this] {
    if (g_interrupted.exchange(false))
      emit interrupted();
  });
  m_poll.start(kPollMs);
}

kovInterruptWatch::~kovInterruptWatch()
{
#ifdef Q_OS_UNIX
  sigaction(SIGINT, &g_previousInt, nullptr);
  sigaction(SIGTERM, &g_previousTerm, nullptr);
#endif
}
