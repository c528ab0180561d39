#include "kit/MFLog/MFLog.hpp"

#include <algorithm>

namespace nivlo {

void MFLogSetLevel(unsigned long level) { MFLoggerImpl::sharedInstance()->setLogLevel(std::min(level, 7UL)); }

void MFLogSetMaxFileSize(std::uint64_t size) { MFLoggerImpl::sharedInstance()->setMaxFileSize(size); }

std::filesystem::path MFLogFileDirectory() { return MFLoggerImpl::sharedInstance()->logFileDirectory(); }

}  // namespace nivlo
