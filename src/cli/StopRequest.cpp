#include "cli/StopRequest.h"

#include <csignal>

namespace qelprn::cli {

namespace {

volatile std::sig_atomic_t g_stop = 0;
using Handler = void (*)(int);
Handler g_previousInt = SIG_DFL;
Handler g_previousTerm = SIG_DFL;

extern "C" void onStopSignal(int)
{
    g_stop = 1;
}

} // namespace

StopRequest::StopRequest()
{
    g_stop = 0;
    g_previousInt = std::signal(SIGINT, onStopSignal);
    g_previousTerm = std::signal(SIGTERM, onStopSignal);
}

StopRequest::~StopRequest()
{
    std::signal(SIGINT, g_previousInt == SIG_ERR ? SIG_DFL : g_previousInt);
    std::signal(SIGTERM, g_previousTerm == SIG_ERR ? SIG_DFL : g_previousTerm);
}

bool StopRequest::requested()
{
    return g_stop != 0;
}

} // namespace qelprn::cli
