#pragma once

#include "platform/foundation/ut_type.h"

#include <array>
#include <initializer_list>
#include <span>

namespace zelkam {

/// What the registry knows of one type. Records are never changed or freed once they can be seen.
struct UTTypeRecord
{
    /// Views of zero-terminated text that lives as long as the record.
    QStringView identifier;
    QStringView mimeType;
    std::array<const UTTypeRecord *, 2> parents = {}; ///< unused ones are null

    bool conforms(const UTTypeRecord *to) const
    {
        if (this == to)
            return true;
        for (const UTTypeRecord *parent : parents) {
            if (parent && parent->conforms(to))
                return true;
        }
        return false;
    }
};

/// An extension that the MIME database has no answer for, several answers or another answer than
/// devices of this kind give.
struct DeclaredExtension
{
    QStringView extension;
    const UTTypeRecord *record;
};

std::span<const UTTypeRecord *const> declaredTypes();
std::span<const DeclaredExtension> declaredExtensions();

/// The record that a type of the MIME database conforms to, when it is none of those declared.
std::array<const UTTypeRecord *, 2> parentsByMimeName(QStringView mimeName, QStringView genericIcon,
                                                      bool isText, bool isXml, bool isZip);

} // namespace zelkam
