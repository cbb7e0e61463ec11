// What was saved where: the past jobs, and a summary of one of them to read and to print.
#pragma once

#include <string>
#include <vector>

#include "app/Application.h"
#include "forms/Form.h"

namespace qx::access {

/// Stands beside the jobs of the main menu, where the host's catalogue has its texts.
class frmJobs : public forms::Form {
 public:
  explicit frmJobs(app::Application& application);

  forms::Label lblJobs{*this, "lblJobs", app::MessageId::JobsCaption};
  forms::ListBox lstJobs{*this, "lstJobs"};
  forms::Label lblSummary{*this, "lblSummary", app::MessageId::SummaryCaption};
  forms::TextBox txtSummary{*this, "txtSummary"};
  forms::CommandButton cmdPrint{*this, "cmdPrint", app::MessageId::PrintCaption};
  forms::CommandButton cmdClose{*this, "cmdClose", app::MessageId::CloseCaption};

 protected:
  void OnLoad() override;
  void OnUnload() override;

 private:
  std::string Word(app::MessageId id) const;
  std::string KindOf(const app::PastJob& job) const;
  std::string ResultOf(const app::PastJob& job) const;
  std::string TimeOf(const app::PastJob& job) const;
  std::string DataOf(const app::PastJob& job) const;
  std::string SummaryOf(const app::PastJob& job) const;
  void ShowSummary();
  void Print();

  app::Application& application_;
  std::vector<app::PastJob> jobs_;  ///< the newest first
};

}  // namespace qx::access
