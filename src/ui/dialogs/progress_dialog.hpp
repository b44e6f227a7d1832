#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QEventLoop>

class QLabel;
class QProgressBar;
class QPushButton;

namespace velmora {
class ProgressPanel;
struct ResultTable;
}  // namespace velmora

namespace velmora::ui {

class ResultTableView;

/// The panel of a long operation. It appears only when the operation takes long enough to be noticed,
/// and gives the window its turn many times a second, so that Cancel works and nothing freezes.
class ProgressDialog : public QDialog {
  Q_OBJECT

 public:
  /// The panel must outlive the dialogue.
  ProgressDialog(ProgressPanel& panel, QWidget* parent);

  /// The panel changed, or the operation gives the window a turn.
  void Update();
  [[nodiscard]] const ProgressPanel& Panel() const { return panel_; }
  /// Waits until the panel is closed. Returns whether with "&Graph".
  bool WaitForDone();

 protected:
  void reject() override;

 private:
  void ShowState();
  void ShowBar();
  void ShowTable(const ResultTable& table);

  ProgressPanel& panel_;
  QElapsedTimer age_;
  QElapsedTimer sinceTurn_;
  QEventLoop waiting_;
  bool graph_ = false;
  QLabel* name_;
  QLabel* format_;
  QLabel* status_;
  QProgressBar* bar_;
  QPushButton* cancel_;
  QPushButton* done_;
  QPushButton* graphButton_;
  ResultTableView* table_ = nullptr;  // of work that shows results on its way
  std::size_t rowsShown_ = 0;
};

}  // namespace velmora::ui
