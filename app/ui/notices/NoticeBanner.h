#pragma once

#include "app/ui/notices/NoticeStrip.h"

/// A strip that says the same as long as it is there.
class NoticeBanner : public NoticeStrip {
    Q_OBJECT

public:
    explicit NoticeBanner(const QString& text, QWidget* parent = nullptr);
};
