#include "workspace/code_page.h"

#include "workspace/multi_byte_encoding.h"
#include "workspace/single_byte_encoding.h"

#include <array>
#include <memory>
#include <utility>

#include <unicode/ucnv.h>

namespace lintara::workspace {

namespace {

// The character of one byte; 0 when there is none.
char16_t CharacterOf(UConverter* converter, std::size_t byte) {
    const char source = static_cast<char>(byte);
    std::array<char16_t, 4> target{};
    UErrorCode error = U_ZERO_ERROR;
    const int32_t units =
        ucnv_toUChars(converter, target.data(), static_cast<int32_t>(target.size()), &source, 1, &error);
    return U_SUCCESS(error) && units == 1 ? target[0] : u'\0';
}

bool ExtendsAscii(UConverter* converter) {
    for (const char16_t byte : {u'\t', u'\n', u'\r'}) {
        if (CharacterOf(converter, byte) != byte) {
            return false;
        }
    }
    for (std::size_t byte = 0x20; byte < 0x7F; ++byte) {
        if (CharacterOf(converter, byte) != byte) {
            return false;
        }
    }
    return true;
}

CodePageTable TableOf(UConverter* converter) {
    CodePageTable table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        table[byte] = byte < 0x80 ? static_cast<char16_t>(byte) : CharacterOf(converter, byte);
    }
    return table;
}

// The name under which the code page is registered, else ICU's own.
std::string PublicName(UConverter* converter) {
    UErrorCode error = U_ZERO_ERROR;
    const char* const own = ucnv_getName(converter, &error);
    for (const char* const standard : {"MIME", "IANA"}) {
        error = U_ZERO_ERROR;
        const char* const name = ucnv_getStandardName(own, standard, &error);
        if (U_SUCCESS(error) && name != nullptr) {
            return name;
        }
    }
    return own;
}

bool IsStateless(UConverterType type) {
    return type == UCNV_SBCS || type == UCNV_DBCS || type == UCNV_MBCS || type == UCNV_LATIN_1 ||
           type == UCNV_US_ASCII;
}

}  // namespace

std::expected<EncodingPtr, std::string> OpenCodePage(const std::string& converterName) {
    UErrorCode error = U_ZERO_ERROR;
    ConverterPtr converter(ucnv_open(converterName.c_str(), &error));
    if (U_FAILURE(error) || converter == nullptr) {
        return nullptr;
    }
    error = U_ZERO_ERROR;
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    std::string name = PublicName(converter.get());
    const UConverterType type = ucnv_getType(converter.get());
    if (!IsStateless(type)) {
        return std::unexpected("the code page " + name +
                               " cannot be edited line by line: its bytes mean different things after a "
                               "switch; convert the files to UTF-8 first");
    }
    if (!ExtendsAscii(converter.get())) {
        return std::unexpected("the code page " + name +
                               " is no extension of ASCII, which project files have to be in");
    }
    if (ucnv_getMaxCharSize(converter.get()) == 1) {
        return std::make_shared<SingleByteEncoding>(std::move(name), TableOf(converter.get()));
    }
    return std::make_shared<MultiByteEncoding>(std::move(name), std::move(converter));
}

}  // namespace lintara::workspace
