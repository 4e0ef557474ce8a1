// What a run reads from and writes to: standard input, standard output for results, standard error for
// messages. Tests hand in strings.
#pragma once

#include <chrono>
#include <expected>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace lintara::cli {

class Sink {
  public:
    virtual ~Sink() = default;

    void Write(std::string_view bytes);
    // Whether any write failed; what follows is discarded.
    [[nodiscard]] bool failed() const { return failed_; }
    // Whether it failed because nobody reads what is written any more.
    [[nodiscard]] virtual bool readerIsGone() const { return false; }

  protected:
    // Writes all of `bytes` and tells whether that worked.
    virtual bool DoWrite(std::string_view bytes) = 0;

  private:
    bool failed_ = false;
};

class StringSink : public Sink {
  public:
    std::string text;

  protected:
    bool DoWrite(std::string_view bytes) override;
};

// Writes to a file descriptor, unbuffered: the callers hand over whole pieces.
class DescriptorSink : public Sink {
  public:
    explicit DescriptorSink(int descriptor) : descriptor_(descriptor) {}

    [[nodiscard]] bool readerIsGone() const override { return readerIsGone_; }

  protected:
    bool DoWrite(std::string_view bytes) override;

  private:
    int descriptor_;
    bool readerIsGone_ = false;
};

class Source {
  public:
    virtual ~Source() = default;

    // All there is. The error is a sentence.
    [[nodiscard]] virtual std::expected<std::string, std::string> ReadAll() = 0;
    // What there is now, as much of it as the buffer holds; waits for some. 0 at the end.
    [[nodiscard]] virtual std::expected<std::size_t, std::string> Read(std::span<char> buffer) = 0;
};

class StringSource : public Source {
  public:
    std::string text;

    std::expected<std::string, std::string> ReadAll() override { return std::exchange(text, {}); }
    std::expected<std::size_t, std::string> Read(std::span<char> buffer) override;
};

class DescriptorSource : public Source {
  public:
    explicit DescriptorSource(int descriptor) : descriptor_(descriptor) {}

    std::expected<std::string, std::string> ReadAll() override;
    std::expected<std::size_t, std::string> Read(std::span<char> buffer) override;

  private:
    int descriptor_;
};

using Now = std::function<std::chrono::steady_clock::time_point()>;

struct Streams {
    Source& in;
    Sink& out;
    Sink& err;
    bool outIsTerminal = false;
    bool errIsTerminal = false;
    bool wantsColor = true;  // false when the environment says NO_COLOR, or the terminal is a dumb one
    Now clock = [] { return std::chrono::steady_clock::now(); };
};

}  // namespace lintara::cli
