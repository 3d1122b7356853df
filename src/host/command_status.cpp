#include "host/command_status.h"

namespace zelkam {

QString commandStatusName(CommandStatus status)
{
    switch (status) {
    case CommandStatus::UNKNOWN:
        return QStringLiteral("UNKNOWN");
    case CommandStatus::INVALID_PARAM:
        return QStringLiteral("INVALID_PARAM");
    case CommandStatus::FILE_NOT_FOUND:
        return QStringLiteral("FILE_NOT_FOUND");
    case CommandStatus::NETWORK_RESPONSE_ERROR:
        return QStringLiteral("NETWORK_RESPONSE_ERROR");
    case CommandStatus::OBJECT_CREATION_FAILED:
        return QStringLiteral("OBJECT_CREATION_FAILED");
    case CommandStatus::OBJECT_REFERENCE_FAILED:
        return QStringLiteral("OBJECT_REFERENCE_FAILED");
    case CommandStatus::NO_REPLY:
        return QStringLiteral("NO_REPLY");
    case CommandStatus::COMMAND_NOT_FOUND:
        return QStringLiteral("COMMAND_NOT_FOUND");
    case CommandStatus::ORIGIN_NOT_ALLOWED:
        return QStringLiteral("ORIGIN_NOT_ALLOWED");
    }
    return QStringLiteral("UNKNOWN");
}

} // namespace zelkam
