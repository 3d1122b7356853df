#pragma once

#include <QString>

namespace zelkam {

/// The error statuses that a command can reply with. The page sees the name as the status and
/// the raw value as the code.
enum class CommandStatus {
    UNKNOWN = 1000,
    INVALID_PARAM = 1001,
    FILE_NOT_FOUND = 1002,
    NETWORK_RESPONSE_ERROR = 1003,
    OBJECT_CREATION_FAILED = 1004,
    OBJECT_REFERENCE_FAILED = 1005,
    // The host's own: no plug-in replies with these.
    NO_REPLY = 1900,           ///< the call was let go without a reply
    COMMAND_NOT_FOUND = 1901,  ///< no plug-in has a command of that name
    ORIGIN_NOT_ALLOWED = 1902, ///< the calling page may not call
};

/// The name of the case, as the page sees it ("INVALID_PARAM").
QString commandStatusName(CommandStatus status);

} // namespace zelkam
