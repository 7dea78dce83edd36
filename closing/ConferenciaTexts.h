#pragma once

#include "closing/ClosingRehearsal.h"

#include <QStringList>

/// What the window "Conferência" says about a rehearsed pre-sale, in Portuguese.
namespace tarvessa::conferencia {

/// What would become of it, in a word or two.
QString outcomeText(const RehearsedPv& rehearsed);

/// How or why, in one line.
QString detailText(const ListedPv& pv, const RehearsedPv& rehearsed);

/// A kind of outcome that is counted and can be shown alone. A refused pre-sale has that of each of its
/// reasons besides that of all refused ones.
struct Group {
    RehearsedPv::Outcome outcome;
    std::optional<ClosingReason> reason = {}; ///< only those refused for it
    bool letters = false;                     ///< only those whose document has letters

    bool contains(const RehearsedPv& rehearsed) const;
};

/// All kinds, in the order of the window.
const QList<Group>& groups();
QString groupText(const Group& group);

} // namespace tarvessa::conferencia
