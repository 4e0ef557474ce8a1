#include "tests/ui_win32/pictures.h"

#include "dialogs/dialogs_lt.h"
#include "history/show_history.h"
#include "tests/support/recording_settings.h"
#include "tests/ui_win32/history_globals.h"
#include "tests/ui_win32/user.h"
#include "ui/win32/handles.h"

#include <cstdint>
#include <fstream>
#include <vector>

namespace lintara::ui::win32 {
namespace {

struct Picture {
    LONG width = 0;
    LONG height = 0;
    std::vector<std::uint32_t> pixels;  // from the top left, as the system has them in memory
};

struct DcDeleter {
    void operator()(HDC dc) const { ::DeleteDC(dc); }
};

Picture PictureOf(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    Picture picture{.width = place.right - place.left, .height = place.bottom - place.top, .pixels = {}};
    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof format.bmiHeader;
    format.bmiHeader.biWidth = picture.width;
    format.bmiHeader.biHeight = -picture.height;
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    const WindowDc screen(nullptr);
    const std::unique_ptr<std::remove_pointer_t<HDC>, DcDeleter> dc(::CreateCompatibleDC(screen.get()));
    void* bits = nullptr;
    const std::unique_ptr<std::remove_pointer_t<HBITMAP>, GdiDeleter> bitmap(
        ::CreateDIBSection(dc.get(), &format, DIB_RGB_COLORS, &bits, nullptr, 0));
    const Selected selected(dc.get(), bitmap.get());
    const HDC shown = ::GetWindowDC(window);
    ::BitBlt(dc.get(), 0, 0, picture.width, picture.height, shown, 0, 0, SRCCOPY);
    ::ReleaseDC(window, shown);
    ::GdiFlush();
    const auto* first = static_cast<const std::uint32_t*>(bits);
    picture.pixels.assign(first, first + picture.width * picture.height);
    return picture;
}

bool Write(const Picture& picture, const std::string& file) {
    const auto size = static_cast<DWORD>(picture.pixels.size() * sizeof(std::uint32_t));
    BITMAPINFOHEADER format{};
    format.biSize = sizeof format;
    format.biWidth = picture.width;
    format.biHeight = -picture.height;
    format.biPlanes = 1;
    format.biBitCount = 32;
    BITMAPFILEHEADER head{};
    head.bfType = 0x4D42;
    head.bfOffBits = sizeof head + sizeof format;
    head.bfSize = head.bfOffBits + size;
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char*>(&head), sizeof head);
    out.write(reinterpret_cast<const char*>(&format), sizeof format);
    out.write(reinterpret_cast<const char*>(picture.pixels.data()), static_cast<std::streamsize>(size));
    return out.good();
}

class Photographer {
  public:
    explicit Photographer(std::string folder) : folder_(std::move(folder)) {}

    // Takes the picture of the window that `show` shows, and closes it.
    template <class Show>
    void Take(const std::string& name, Show show) {
        later_.Post([&] {
            FormWindow& window = *toolkit_.ActiveWindow();
            ::RedrawWindow(window.Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
            toolkit_.DoEvents();
            taken_ += Write(PictureOf(window.Handle()), folder_ + "/windows-" + name + ".bmp") ? 1 : 0;
            window.Close();
        });
        show();
    }

    [[nodiscard]] Win32Toolkit& toolkit() { return toolkit_; }
    [[nodiscard]] int taken() const { return taken_; }

  private:
    std::string folder_;
    Later later_;
    Win32Toolkit toolkit_{::GetModuleHandleW(nullptr)};
    int taken_ = 0;
};

}  // namespace

int TakePictures(const std::string& folder) {
    Photographer photographer(folder);
    support::RecordingSettings settings;
    const DialogsLT dialogs({.toolkit = photographer.toolkit(), .settings = settings});
    photographer.Take("insert-error-handlers", [&] {
        dialogs::InsertEHParameters parameters{.iLenGetMemberName = 7, .iGetLineNumber = 25};
        (void)dialogs.GetInsertEHParameters(parameters);
    });
    photographer.Take("remove-error-handlers", [&] {
        dialogs::RemoveEHParameters parameters{.iLenGetMemberName = 7, .iGetLineNumber = 25};
        (void)dialogs.GetRemoveEHParameters(parameters);
    });
    photographer.Take("insert-custom-code", [&] {
        dialogs::InsertCCParameters parameters{.ProcAvailable = true, .ComponentAvailable = 1};
        (void)dialogs.GetInsertCCParameters(parameters);
    });
    photographer.Take("remove-custom-code", [&] {
        dialogs::RemoveCCParameters parameters{.ProcAvailable = true, .ComponentAvailable = 1};
        (void)dialogs.GetRemoveCCParameters(parameters);
    });
    photographer.Take("history", [&] {
        HistoryGlobals globals;
        FillHistory(globals);
        history::ShowHistoryWindow(globals, photographer.toolkit());
    });
    return photographer.taken();
}

}  // namespace lintara::ui::win32
