#pragma once

#include <QString>

namespace tarvessa::report {

/// Why a report must not send this query, in Portuguese and without a full stop; empty for one statement that
/// begins with SELECT or WITH and only reads. Quoted texts, quoted names and comments are skipped; a comment
/// that the server would execute is refused.
QString queryProblem(QStringView sql);

/// The whole number or quoted text that the query compares the column with ("colunapreco=2" gives "2"); empty
/// when it compares it with none, or with several. Letter case of the name does not matter.
QString comparedValue(QStringView sql, QStringView column);

} // namespace tarvessa::report
