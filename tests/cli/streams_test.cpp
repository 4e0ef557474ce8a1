// What the program reads from and writes to, over pipes that whoever started it has made non-blocking.

#include "cli/streams.h"

#include "tests/support/temporary_folder.h"
#include "workspace/descriptor.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

constexpr std::chrono::milliseconds aWhile{50};

// A pipe both of whose ends never wait.
struct ImpatientPipe {
    ImpatientPipe() { EXPECT_EQ(::pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC), 0); }
    ~ImpatientPipe() {
        CloseReader();
        CloseWriter();
    }
    ImpatientPipe(const ImpatientPipe&) = delete;
    ImpatientPipe& operator=(const ImpatientPipe&) = delete;

    void CloseReader() { Close(ends[0]); }
    void CloseWriter() { Close(ends[1]); }

    std::array<int, 2> ends{};

  private:
    static void Close(int& end) {
        if (end >= 0) {
            ::close(end);
        }
        end = -1;
    }
};

TEST(StreamsTest, AFullPipeIsWaitedForAndAnEmptyOneToo) {
    ImpatientPipe pipe;
    const std::string sent(1'000'000, 'x');
    std::thread writer([&] {
        DescriptorSink sink(pipe.ends[1]);
        std::this_thread::sleep_for(aWhile);
        sink.Write(sent);
        EXPECT_FALSE(sink.failed());
        std::this_thread::sleep_for(aWhile);
        sink.Write("end");
        EXPECT_FALSE(sink.failed());
        pipe.CloseWriter();
    });
    DescriptorSource source(pipe.ends[0]);
    const auto got = source.ReadAll();
    writer.join();
    ASSERT_TRUE(got) << got.error();
    EXPECT_TRUE(*got == sent + "end");
}

// The file takes no room on the disk.
TEST(StreamsTest, MoreThanAnySourceCodeIsNotRead) {
    const support::TemporaryFolder folder;
    const auto path = folder.Write("large", "");
    std::filesystem::resize_file(path, (std::uintmax_t{1} << 30) + 1);
    const workspace::Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    ASSERT_TRUE(file.open());
    EXPECT_EQ(DescriptorSource(file.get()).ReadAll().error(),
              "standard input is longer than 1 GiB, too long for source code");
}

TEST(StreamsTest, AReaderWhoLeavesAFullPipeIsNoticed) {
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    ImpatientPipe pipe;
    std::thread reader([&] {
        std::this_thread::sleep_for(aWhile);
        pipe.CloseReader();
    });
    DescriptorSink sink(pipe.ends[1]);
    sink.Write(std::string(1'000'000, 'x'));
    reader.join();
    EXPECT_TRUE(sink.failed());
    EXPECT_TRUE(sink.readerIsGone());
    std::signal(SIGPIPE, before);
}

}  // namespace
}  // namespace lintara::cli
