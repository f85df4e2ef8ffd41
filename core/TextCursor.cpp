#include "core/TextCursor.h"

#include "core/RunTimeError.h"
#include "support/clsAppLog.h"

namespace quarn {

void LogMissingSeparator(clsAppLog& log) noexcept {
    const RunTimeError error(ErrorNumber::InvalidProcedureCall);
    log.Log("modCommonSubs", "ExtractString", error.Number(), error.what());
}

} // namespace quarn
