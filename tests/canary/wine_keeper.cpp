#include <chrono>
#include <thread>

// Keeps Wine's background processes up while the tests run: without it each program starts them
// anew, and they hold its output open. Ends by itself should nobody end it.
int main() { std::this_thread::sleep_for(std::chrono::minutes(30)); }
