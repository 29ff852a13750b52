#include "app/desktop/document/FileState.h"

FileState FileState::inSyncWith(const std::optional<ContentDigest>& base) {
    FileState state;
    state.base = base;
    state.present = {base};
    return state;
}

void FileState::update(const FileContent& content) {
    present = content;
    if (present.digest == base) {
        overruled.reset();
    }
    if (present.digest == base || present.isMissing()) {
        unreadable.reset();
    }
}

FileState::Verdict FileState::verdict(bool hasWork) const {
    if (present.digest == base) {
        return Verdict::inSync;
    }
    if (present == overruled) {
        return Verdict::settled;
    }
    if (present.isMissing()) {
        return Verdict::missing;
    }
    if (present.digest == attempted) {
        return Verdict::settled;
    }
    if (present == unreadable) {
        return Verdict::unreadable;
    }
    return hasWork || overruled ? Verdict::ask : Verdict::reload;
}

bool FileState::isLost() const {
    if (present.digest == base) {
        return false;
    }
    return present.isMissing() || present.digest == attempted || overruled || unreadable;
}

bool FileState::mayOverwrite(const ContentDigest& content) const {
    return content == base || content == attempted || (overruled && content == overruled->digest);
}
