#include <thread>

// The crash comes while a second thread waits, which is when a crash handler loses the status.
int main() {
  std::thread waiting([] { std::this_thread::sleep_for(std::chrono::seconds(5)); });
  volatile int* nowhere = nullptr;
  *nowhere = 1;
  waiting.join();
}
