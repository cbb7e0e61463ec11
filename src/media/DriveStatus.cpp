// Whether a drive holds a medium that can be used.
#include "media/DriveStatus.h"

#include "app/Messages.h"
#include "app/WindowsPath.h"
#include "media/Question.h"

namespace media {

std::int32_t GetDriveStatus(app::Application& application, const std::string& driveOrFolder) {
  const auto component = application.host.components.CreateMediaComponent();
  if (!component) return kDriveError;
  component->SetUp(application.state.MediaAppCommand);
  return component->GetDriveStatus(driveOrFolder);
}

Medium WaitForMedium(app::Application& application, const std::string& drive, const MediumMessages& messages) {
  for (;;) {
    switch (GetDriveStatus(application, drive)) {
      case kMediumReady:
        return Medium::Ready;
      case kReadableMedium:
        return Medium::Readable;
      case kDriveError:
        app::ShowMessage(application, messages.error);
        return Medium::Stopped;
      case kDriveUnusable:
        app::ShowMessage(application, messages.unusable);
        return Medium::Stopped;
      case kNoMedium:
        if (!Consents(application, messages.insert)) return Medium::Stopped;
        break;
      default:  // an answer that means nothing: ask again
        break;
    }
    application.host.messageLoop.Yield();
  }
}

app::ResultCode CheckSourceDrive(app::Application& application) {
  const std::string drive = app::DriveLetterOf(application.state.SelectedFolder);
  return WaitForMedium(application, drive, kSourceMessages) == Medium::Stopped ? app::kStopped : app::kDone;
}

}  // namespace media
