// The maintenance dialog: what goes into a maintenance log backup.
#pragma once

#include <cstdint>

#include "app/Application.h"
#include "forms/Form.h"
#include "jobs/Items.h"

namespace maintenance {

/// How the dialog ended.
enum class Choice : std::int32_t {
  Protected = 0,    ///< start, without personal information
  Unprotected = 1,  ///< start, with personal information: confirmed
  Cancelled = 2     ///< also by the close box
};

/// Shows how much the host's databases hold, and asks whether personal information is protected and
/// images of how many days are collected. Its buttons only hide it: the owner reads the choices and
/// then unloads it.
class frmMaintenance : public forms::Form {
 public:
  explicit frmMaintenance(app::Application& application);

  Choice Result() const { return result_; }
  /// 1 when images of a range of days are collected, 0 when the image folders are taken as they are.
  std::int32_t CollectsImages() const { return collectsImages_; }
  /// How many days back images are collected, at most jobs::kAllDays: the host's database has no date further back.
  std::int32_t DayCount() const { return dayCount_; }

  forms::Label lblLabel1{*this, "lblLabel1", app::MessageId::MaintenanceIntroduction};
  forms::Label lblLabel2{*this, "lblLabel2", app::MessageId::PatientCountCaption};
  forms::TextBox txtPatientCount{*this, "txtPatientCount"};
  forms::Label lblError1{*this, "lblError1", forms::kNoCaption};
  forms::Label lblLabel3{*this, "lblLabel3", app::MessageId::StudyCountCaption};
  forms::TextBox txtStudyCount{*this, "txtStudyCount"};
  forms::Label lblError2{*this, "lblError2", forms::kNoCaption};
  forms::Label lblLabel4{*this, "lblLabel4", app::MessageId::UserCountCaption};
  forms::TextBox txtUserCount{*this, "txtUserCount"};
  forms::Label lblError3{*this, "lblError3", forms::kNoCaption};
  forms::Label lblLabel5{*this, "lblLabel5", app::MessageId::ImagesHint};
  forms::Frame Frame1{*this, "Frame1", app::MessageId::PrivacyFrameCaption};
  forms::OptionButton Option1{*this, "Option1", app::MessageId::ProtectCaption,
                              &Frame1};  ///< protect personal information
  forms::OptionButton Option2{*this, "Option2", app::MessageId::IncludeCaption, &Frame1};  ///< do not
  forms::Frame Frame2{*this, "Frame2", app::MessageId::ImagesFrameCaption};
  forms::OptionButton Option3{*this, "Option3", app::MessageId::AllImagesCaption, &Frame2};  ///< all images
  forms::OptionButton Option4{*this, "Option4", app::MessageId::RecentImagesCaption,
                              &Frame2};  ///< images of a range of days
  forms::TextBox txtCollectRange{*this, "txtCollectRange"};
  forms::Label lblLabel7{*this, "lblLabel7", app::MessageId::DaysCaption};
  forms::CommandButton cmdStart{*this, "cmdStart", app::MessageId::StartCaption};
  forms::CommandButton cmdCancel{*this, "cmdCancel", app::MessageId::CancelCaption};

 protected:
  void OnLoad() override;
  void OnUnload() override;

 private:
  void ShowCounts();
  void EnableRange(bool enabled);
  void Start();
  void Cancel();

  app::Application& application_;
  Choice result_ = Choice::Cancelled;
  std::int32_t collectsImages_ = 0;
  std::int32_t dayCount_ = jobs::kAllDays;
};

}  // namespace maintenance
