// The message numbers in which an ordinary backup and a maintenance log backup differ.
#include "backup/OperationMessages.h"

namespace backup {
namespace {

constexpr OperationMessages kBackup{.medium = {63310, 63311, 64300},
                                    .prepareMedium = 64305,
                                    .formatFailed = 60382,
                                    .formatCancelled = 60381,
                                    .unusableFloppy = 63312,
                                    .changeDisk = 64306,
                                    .labelFailed = 60383,
                                    .noSpace = 62360,
                                    .foreignLabel = 64301,
                                    .createFolder = 64302,
                                    .folderNotCreated = 63413,
                                    .overwrite = 64303,
                                    .descriptorFailed = 60372,
                                    .finished = 65300,
                                    .stopped = 65301,
                                    .failures = {60351, 60352}};

// The question about a foreign label and the failed descriptor have no number of their own here.
constexpr OperationMessages kMaintenance{.medium = {63460, 63461, 64450},
                                         .prepareMedium = 64455,
                                         .formatFailed = 60482,
                                         .formatCancelled = 60481,
                                         .unusableFloppy = 63462,
                                         .changeDisk = 64456,
                                         .labelFailed = 60483,
                                         .noSpace = 62460,
                                         .foreignLabel = 64301,
                                         .createFolder = 64452,
                                         .folderNotCreated = 63463,
                                         .overwrite = 64453,
                                         .descriptorFailed = 60372,
                                         .finished = 65450,
                                         .stopped = 65451,
                                         .failures = {60451, 60452}};

}  // namespace

const OperationMessages& MessagesOf(app::Operation operation) {
  return operation == app::Operation::MaintenanceLogBackup ? kMaintenance : kBackup;
}

}  // namespace backup
