#include "cli/serve/serve_run.h"

#include "cli/serve/endpoint.h"
#include "cli/serve/line_reader.h"
#include "cli/serve/session.h"

#include <csignal>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace lintara::cli {
namespace {

// A client that is gone is the end of the work, not a reason to be killed in the middle of it.
class BrokenPipeIgnored {
  public:
#ifdef SIGPIPE
    BrokenPipeIgnored() : before_(std::signal(SIGPIPE, SIG_IGN)) {}
    ~BrokenPipeIgnored() {
        std::signal(SIGPIPE, before_);
    }
#else
    BrokenPipeIgnored() = default;
#endif
    BrokenPipeIgnored(const BrokenPipeIgnored&) = delete;
    BrokenPipeIgnored& operator=(const BrokenPipeIgnored&) = delete;

#ifdef SIGPIPE
  private:
    void (*before_)(int);
#endif
};

// Memory that a long line took goes back to the system at once.
void ServeLine(Endpoint& endpoint, LineReader& lines) {
    constexpr std::size_t longForALine = 1024 * 1024;
    const bool isLong = lines.line().size() > longForALine;
    endpoint.Serve(lines.line());
    lines.Release();
#ifdef __GLIBC__
    if (isLong) {
        ::malloc_trim(0);
    }
#else
    (void)isLong;
#endif
}

Session SessionFor(const ServeOptions& options, const Environment& environment) {
    return options.isolated ? Session::Isolated(environment.platform, environment.identity)
                            : Session(environment.platform, environment.identity);
}

}  // namespace

ExitStatus RunServe(const ServeOptions& options, Environment& environment) {
    const BrokenPipeIgnored brokenPipe;
    Streams& streams = environment.streams;
    Session session = SessionFor(options, environment);
    session.AllowOutside(options.allowedOutside);
    Endpoint endpoint(session, streams.out);
    LineReader lines(streams.in, options.longestLine);
    while (!streams.out.failed()) {
        const auto next = lines.Next();
        if (!next) {
            streams.err.Write("lintara: error: " + next.error() + "\n");
            return ExitStatus::Failed;
        }
        switch (*next) {
            case LineReader::Outcome::Line:
                ServeLine(endpoint, lines);
                break;
            case LineReader::Outcome::TooLong:
                endpoint.RefuseLongLine(options.longestLine);
                break;
            case LineReader::Outcome::End:
                return ExitStatus::Done;
        }
    }
    if (!streams.out.readerIsGone()) {
        streams.err.Write("lintara: error: standard output could not be written\n");
    }
    return ExitStatus::Failed;
}

}  // namespace lintara::cli
