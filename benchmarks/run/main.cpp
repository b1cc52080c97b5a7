// The run against the bare loop: processor time at 100,000 documents of each kind and of each kind
// alone, growth from 10,000 documents, and the largest memory. Both processes run in turn, in a
// folder of their own in memory if the system has one.
//
//   benchmark_run PROGRAM BARE-LOOP NOTES-LIBRARY

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t repetitions = 9;
constexpr long mostMegabytes = 150;
constexpr double mostGrowth = 12;  // of ten times the documents

struct Comparison {
  const char* what;
  const char* documents;  // events, filters, updates, persons
  double most;            // of the run's time by that of the bare loop: as measured, and a fifth
};

constexpr Comparison comparisons[] = {
    {"all kinds", "100000 100000 100000 100000", 2.6},
    {"events", "100000 0 0 0", 1.7},
    {"sender filters", "0 100000 0 0", 3.2},
    {"updates", "0 0 100000 0", 2.6},
    {"persons", "0 0 0 100000", 4.6},
};

// The folder with the library, which is also the data folder. Gone at the end.
class Folder {
 public:
  explicit Folder(const fs::path& library)
      : path_((fs::exists("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path()) /
              ("benchmark-run-" + std::to_string(::getpid()))) {
    fs::create_directory(path_);
    fs::copy_file(library, path_ / "nnotes.dll");
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { fs::remove_all(path_); }

  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

struct Used {
  double seconds;  // of the processor, for the process and for the system on its behalf
  long kilobytes;  // of memory, at most
};

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

Used run(const std::string& program, const Folder& folder, const std::string& documents) {
  const pid_t process = ::fork();
  if (process == 0) {
    ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO);
    ::setenv("DOCUMENTS_TO_FIND", documents.c_str(), 1);
    // A page that is touched for the first time costs some virtual machines as much as a thousand
    // calls, and would then be most of what is measured.
    ::setenv("GLIBC_TUNABLES", "glibc.malloc.hugetlb=1:glibc.malloc.top_pad=67108864", 1);
    ::execl(program.c_str(), program.c_str(), folder.path().c_str(), nullptr);
    ::_exit(127);
  }
  int status = 0;
  rusage usage{};
  ::wait4(process, &status, 0, &usage);
  // The program ends with 1 where it has written a report, the loop with 0.
  if (!WIFEXITED(status) || WEXITSTATUS(status) > 1) throw std::runtime_error(program + " failed");
  fs::remove_all(folder.path() / "Quellbright");
  return {seconds(usage.ru_utime) + seconds(usage.ru_stime), usage.ru_maxrss};
}

// How often each operation is called for 1,000 documents of each kind, and what is written for
// them.
std::map<std::string, long> effort(const std::string& program, const Folder& folder) {
  const fs::path file = folder.path() / "calls";
  ::setenv("FILE_OF_CALLS", file.c_str(), 1);
  std::map<std::string, long> counts;
  for (const bool isFull : {true, false}) {
    run(program, folder, isFull ? "1000 1000 1000 1000" : "0 0 0 0");
    std::ifstream lines(file);
    std::string name;
    for (long count = 0; lines >> name >> count;) counts[name] += isFull ? count : -count;
  }
  ::unsetenv("FILE_OF_CALLS");
  for (const char* other : {"rchar:", "syscr:", "read_bytes:", "write_bytes:"}) counts.erase(other);
  return counts;
}

using Samples = std::array<double, repetitions>;

double median(Samples samples) {
  std::ranges::nth_element(samples, samples.begin() + repetitions / 2);
  return samples[repetitions / 2];
}

bool compare(const Comparison& comparison, const std::string& program, const std::string& bareLoop,
             const Folder& folder) {
  Samples own{};
  Samples bare{};
  Samples ratios{};
  for (std::size_t i = 0; i < repetitions; ++i) {
    own[i] = run(program, folder, comparison.documents).seconds;
    bare[i] = run(bareLoop, folder, comparison.documents).seconds;
    ratios[i] = own[i] / bare[i];
  }
  const double ratio = median(ratios);
  std::printf("%-16s %8.1f ms  bare %8.1f ms  ratio %5.2f, at most %.2f\n", comparison.what,
              1e3 * median(own), 1e3 * median(bare), ratio, comparison.most);
  std::fflush(stdout);
  return ratio <= comparison.most;
}

bool growsInProportion(const std::string& program, const Folder& folder) {
  Samples growths{};
  for (double& growth : growths) {
    const double few = run(program, folder, "10000 10000 10000 10000").seconds;
    growth = run(program, folder, comparisons[0].documents).seconds / few;
  }
  std::printf("100,000 documents of each kind take %.1f times as long as 10,000, at most %.1f\n",
              median(growths), mostGrowth);
  return median(growths) <= mostGrowth;
}

bool staysSmall(const std::string& program, const Folder& folder) {
  const long megabytes = run(program, folder, comparisons[0].documents).kilobytes / 1024;
  std::printf("100,000 documents of each kind take %ld MB, at most %ld\n", megabytes,
              mostMegabytes);
  return megabytes <= mostMegabytes;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return EXIT_FAILURE;
  const std::string program = argv[1];
  const std::string bareLoop = argv[2];
  const Folder folder(argv[3]);
  if (effort(program, folder) != effort(bareLoop, folder)) {
    std::puts("the program and the bare loop make other calls or write other amounts");
    return EXIT_FAILURE;
  }
  bool isFast = true;
  for (const Comparison& comparison : comparisons) {
    isFast &= compare(comparison, program, bareLoop, folder);
  }
  isFast &= growsInProportion(program, folder);
  isFast &= staysSmall(program, folder);
  return isFast ? EXIT_SUCCESS : EXIT_FAILURE;
}
