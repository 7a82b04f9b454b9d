#pragma once

namespace qelprn::cli {

// While an object lives, Ctrl+C (SIGINT) and SIGTERM do not end the program but ask the running
// per-addressee output to stop after the file being written, so that the files finished and the
// list naming them are left; the handlers before are restored at the end.
class StopRequest
{
public:
    StopRequest();
    ~StopRequest();
    StopRequest(const StopRequest&) = delete;
    StopRequest& operator=(const StopRequest&) = delete;

    static bool requested();
};

} // namespace qelprn::cli
