#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"
#include "ensemble/ensemble_average.hpp"
#include "ensemble/ensemble_log.hpp"
#include "graph/graph.hpp"

namespace velmora {

class ProgressPanel;

/// Ten steps to the average of a list of files, in their order. A graph that the form opens takes its place
/// until it is left; the form then comes back as it was.
class EnsembleForm : public Form, public std::enable_shared_from_this<EnsembleForm> {
 public:
  explicit EnsembleForm(Workbench& workbench);
  EnsembleForm(const EnsembleForm&) = delete;
  EnsembleForm& operator=(const EnsembleForm&) = delete;
  ~EnsembleForm() override;

  /// Shows the form until it is left or gives way to a graph. It must be held by a shared_ptr.
  void Run();

 private:
  enum class Stage {
    Choosing,   // steps 4 and 5
    Chosen,     // channels are: step 6
    Averaging,  // steps 7 to 9
    Finished    // step 10
  };
  enum Row : std::size_t {  // of the buttons
    kChoose,
    kSelect,
    kBegin,
    kOpen,
    kNext,
    kDelete,
    kDone,
    kSaveBinary,
    kSaveText,
    kSaveEnsemble,
    kExport,
    kGraph,
    kRead,
    kHelp,
    kCancel,
    kExit
  };

  // ensemble_form.cpp
  void AddFields();
  void AddButtons();
  FormButton Step(const char* caption, bool (EnsembleForm::*press)(),
                  FormButton::Role role = FormButton::Role::Other);
  bool Guarded(bool (EnsembleForm::*press)());
  void Refresh();
  void ShowSteps();
  void ShowNext();
  void ShowFiles();
  void ShowVariation();
  void LockFields();
  void TakeNumber();

  // ensemble_form_steps.cpp: the buttons, which return whether the form closes
  bool ChooseFirst();
  bool SelectChannels();
  bool BeginAverage();
  bool OpenNext();
  bool AddLast();
  bool RemoveLast();
  bool Calculate();
  /// Of the j-th channel of the average, from 0.
  void TellVariation(std::size_t j);

  // ensemble_form_files.cpp: files in and out of the trial
  [[nodiscard]] std::vector<std::string> AskFiles(const char* title, bool masked);
  [[nodiscard]] std::vector<std::string> Expanded(const std::vector<std::string>& answered) const;
  void AddFiles(const std::vector<std::string>& paths);
  void AddFilesInTurn(const std::vector<std::string>& paths, ProgressPanel& panel);
  bool Load(const std::string& path);
  std::string LoadTrial(const std::string& path);
  bool AddLoaded();
  bool HasChannels(const AveragedFile& file);
  bool IsWanted(const AveragedFile& file);
  void LeaveOut(AveragedFile file, const std::string& why);
  void Log(const std::string& lines);
  void List(const std::string& lines);

  // ensemble_form_results.cpp: what becomes of the average, and the ways out
  bool SaveBinary();
  bool SaveText();
  bool SaveEnsemble();
  bool SaveBy(const std::function<void()>& save);
  bool ViewText();
  bool ShowGraph();
  void OpenGraph(const ChannelFlags& channels);
  void ShowMeanBehind(velmora::Graph& graph) const;
  void ReturnFromGraph();
  bool ReadEnsemble();
  bool ShowHelp();
  bool Cancel();
  bool Exit();
  bool MayDropResults();
  void TellOpened();

  [[nodiscard]] bool HasTrial() const { return workbench_.trial.NData > 0; }
  [[nodiscard]] std::string Value(double value) const;

  Workbench& workbench_;
  Stage stage_ = Stage::Choosing;
  EnsembleAverage average_;
  EnsembleLog log_;
  std::vector<std::string> waiting_;  // come with the first file
  bool pending_ = false;              // the trial is a file of the list that is not in the average
  bool lastAtHand_ = false;           // the trial is what was added last
  // Set: the trial is what was taken out again, of other times and samples than its file has.
  std::optional<AveragedFile> removed_;
  bool loaded_ = false;      // the trial was read here
  bool stretched_ = false;   // the trial at hand has the intervals of an average
  bool previews_ = false;    // the graph that is open shows a file before it is added
  bool logTrouble_ = false;  // has been told
  std::string textFile_;     // the results as text
  std::string directory_;    // of the files chosen last
  std::vector<std::pair<std::string, double>> variation_;  // by channel

  std::string txtFilename_ = "Ensemble.ens";
  std::string txtMask_;
  std::int32_t txtNumber_;
  std::int32_t number_;  // the last that was taken
  bool chkPreview_ = false;
  bool chkPrompt_ = false;
  bool chkUseTime_;
  std::int32_t txtNfiles_ = 0;
  std::string lstFiles_;
  std::string note_;     // what the last step came to, where that needs saying
  std::string lblNext_;  // what to do next
};

}  // namespace velmora
