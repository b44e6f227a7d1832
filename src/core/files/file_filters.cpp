#include "core/files/file_filters.hpp"

#include <fnmatch.h>

#include <algorithm>
#include <array>

namespace velmora {
namespace {

constexpr std::array kDataFiles = {
    FileFilter{"&Known analog data files",
               "*.ana;*.anb;*.anc;*.asc;*.ase;*.asg;*.bb;*.bbt;*.bin;*.vma;*.vmb;*.vme;*.ch?;*.dat;"
               "*.daf;*.d20;*.emg;*.ftf;*.pdt;*.prn;*.rf*;*.stp;*.stm;*.tab;setup.;*.fsv;*.tsv;*.vad;"
               "*.c3d;*.edf;*.rec;*.p2d;*.v3d;*.wav;*.raw;*.fil;*.log"},
    FileFilter{"&APAS analog (.ana)", "*.ana"},
    FileFilter{"&MAC analog (.ana/b/c)", "*.ana;*.anb;*.anc"},
    FileFilter{"&Vicon/C3D analog", "*.c3d;*.vad"},
    FileFilter{"Vel&mora2/3 (.vma/b/e)", "*.vma;*.vmb;*.vme;*.bin"},
    FileFilter{"Bio&Ware2 (.dat,.d20)", "*.dat;*.d20"},
    FileFilter{"&Tavorin data files", "*.av;*.fr;*.ks;*.km;*.ra;*.en;*.mm;*.fo;*.jp;*.pj;*.ps"},
    FileFilter{"A&SCII (.asc,.csv,.out,.prn, .tab,.txt, etc.)",
               "*.anc;*.asc;*.asg;*.bbt;*.vma;*.vme;*.csv;*.out;*.pdt;*.prn;*.rf*;*.tab;*.txt;*.fsv;"
               "*.tsv;*.p2d;*.v3d;*.raw;*.fil"},
    FileFilter{"All &Files (*.*)", "*.*"},
};

constexpr std::array kTextFiles = {
    FileFilter{"&Known text files",
               "*.anc;*.asc;*.apd;*.ase;*.asg;*.vma;*.vmc;*.vme;*.vmu;*.vmv;*.bsv;*.chb.;*.chx;*.cog;"
               "*.csv;*.emg;*.ens;*.evt;*.fat;*.ftf;*.lst;*.out;*.pdt;*.prn;readme.*;*.tab;*.txt;"
               "*.val;*.?sv;*.p2d;*.v3d;*.iem;*.raw;*.fil;*.trg;*.max"},
    FileFilter{"E&xclude .txt files",
               "*.anc;*.asc;*.apd;*.ase;*.asg;*.vma;*.vmc;*.vme;*.vmu;*.vmv;*.bsv;*.chb.;*.chx;*.cog;"
               "*.csv;*.emg;*.ens;*.evt;*.fat;*.ftf;*.lst;*.out;*.pdt;*.prn;readme.*;*.tab;*.val;"
               "*.?sv;*.p2d;*.v3d;*.iem;*.raw;*.fil;*.trg;*.max"},
    FileFilter{"&Workbooks (.qpw,.xl*,.wk*)", "*.xl*;.qpw;.wq1;.wq2;.wb?;*.wk?,*123"},
    FileFilter{"Vel&mora (.asc, .vma/e)", "*.asc;*.vma;*.vme"},
    FileFilter{"Only .&Txt files", "*.txt"},
    FileFilter{"A&SCII (.asc,.csv,.out,.prn, .tab,.txt, etc.)",
               "*.anc;*.asc;*.ase;*.asg;*.bbt;*.vma;*.vmc;*.vme;*.vmu;*.vmv;*.bsv;*.csv;*.ens;*.out;"
               "*.pdt;*.prn;*.rf*;*.tab;*.txt;*.fsv;*.tsv;*.p2d;*.v3d;*.iem;*.raw;*.fil"},
    FileFilter{"All &Files (*.*)", "*.*"},
    FileFilter{"Velmora&2/3 ASCII tables",
               "*.apd;*.vmu;*.vmv;*.bsv;*.cog;*.evt;*.fat;*.ftf;*.iem;*.trg;*.max"},
    FileFilter{"Tavorin &Output", "*.out"},
};

}  // namespace

std::span<const FileFilter> DataFileFilters() {
  return kDataFiles;
}

std::span<const FileFilter> TextFileFilters() {
  return kTextFiles;
}

bool MatchesFilter(const std::string& name, std::string_view patterns) {
  const std::string whole = name.find('.') == std::string::npos ? name + "." : name;
  while (!patterns.empty()) {
    const std::size_t end = std::min(patterns.find(';'), patterns.size());
    const std::string pattern(patterns.substr(0, end));
    if (fnmatch(pattern.c_str(), whole.c_str(), FNM_CASEFOLD | FNM_NOESCAPE) == 0) {
      return true;
    }
    patterns.remove_prefix(std::min(end + 1, patterns.size()));
  }
  return false;
}

}  // namespace velmora
