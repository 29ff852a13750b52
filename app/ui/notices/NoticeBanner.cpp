#include "app/ui/notices/NoticeBanner.h"

NoticeBanner::NoticeBanner(const QString& text, QWidget* parent) : NoticeStrip(parent) {
    setText(text);
}
