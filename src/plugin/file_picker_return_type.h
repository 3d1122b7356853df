#pragma once

#include <QtGlobal>
#include <optional>

namespace zelkam {

/// What a page gets for a picked file: its content inline, or a local address.
enum class FilePickerReturnType { base64 = 0, url = 1 };

/// The case of a raw value; nothing for a value that has none.
constexpr std::optional<FilePickerReturnType> filePickerReturnType(qint64 rawValue)
{
    if (rawValue == 0)
        return FilePickerReturnType::base64;
    if (rawValue == 1)
        return FilePickerReturnType::url;
    return std::nullopt;
}

} // namespace zelkam
