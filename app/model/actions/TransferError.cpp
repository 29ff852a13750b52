#include "app/model/actions/TransferError.h"

#include <QCoreApplication>

TransferError::TransferError()
    : message_(QCoreApplication::translate("TransferError", "Invalid dragged items.")),
      what_(message_.toStdString()) {}
