/* A movable clock for one Wine process. Preloaded (32-bit) into the program, it replaces the C library's real-time
 * clock by a value in a file. The test maps this file and moves the clock; meanwhile it stands still. Timers and waits
 * use other clocks, which stay as they are. Each reading is counted.
 *
 * Needs no headers of the C library: a cross compiler may lack the 32-bit ones.
 */
#include <stddef.h>
#include <stdint.h>

enum { clock_realtime = 0, clock_realtime_coarse = 5 };
enum {
  open_read_write = 02,
  close_on_exec = 02000000,
  protection_read_write = 3,
  map_shared = 1,
  call_clock_gettime64 = 403
};

char* getenv(const char* name);
int open(const char* name, int flags, ...);
int close(int file);
void* mmap(void* address, size_t length, int protection, int flags, int file, long offset);
long syscall(long number, ...);

struct clock_file {     /* bench/clock.py has the same layout */
  int64_t microseconds; /* since 1970-01-01 0 h, Universal Time; not negative */
  uint32_t readings;
};

struct time64 {
  int64_t seconds;
  int32_t fraction; /* nano- or microseconds: the low half of 64 bits */
  int32_t padding;
};

static struct clock_file* the_clock;

__attribute__((constructor)) static void map_clock(void) {
  int file = open(getenv("TIDEWELL_E2E_CLOCK"), open_read_write | close_on_exec);
  the_clock = mmap(NULL, sizeof *the_clock, protection_read_write, map_shared, file, 0);
  close(file);
}

int __gettimeofday64(struct time64* time, void* zone) {
  (void)zone;
  int64_t now = 0; /* if asked before the constructor */
  if (the_clock) {
    __atomic_add_fetch(&the_clock->readings, 1, __ATOMIC_RELAXED);
    now = __atomic_load_n(&the_clock->microseconds, __ATOMIC_RELAXED);
  }
  *time = (struct time64){.seconds = now / 1000000, .fraction = (int32_t)(now % 1000000)};
  return 0;
}

int __clock_gettime64(int clock, struct time64* time) {
  if (clock != clock_realtime && clock != clock_realtime_coarse) {
    return syscall(call_clock_gettime64, clock, time) == 0 ? 0 : -1;
  }
  __gettimeofday64(time, NULL);
  time->fraction *= 1000;
  return 0;
}

int64_t __time64(int64_t* time) {
  struct time64 t;
  __gettimeofday64(&t, NULL);
  if (time) *time = t.seconds;
  return t.seconds;
}
