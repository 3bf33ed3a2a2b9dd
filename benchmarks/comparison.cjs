// What the runners in JavaScript share. They print a name and the processor time of one report in nanoseconds, or with
// --answers the library's answer at each instant.

// The same instants as InstantsOfComparison in comparison.h.
const instants = Array.from({length: 1000}, (_, i) => 2415020.5 + 365.2425 * (50 + 100 * (i + 0.5) / 1000));

/** Runs work(jd), which returns [lit fraction, last New, next New, last Full, next Full] with Julian days. */
exports.run = (name, work) => {
  if (process.argv[2] === '--answers') {
    for (const jd of instants) {
      console.log([name, ...[jd, ...work(jd)].map((value) => value.toFixed(9))].join('\t'));
    }
    return;
  }
  let kept = 0;
  const pass = () => {
    for (const jd of instants) {
      kept += work(jd)[0];
    }
  };
  const enough = 1e6; // microseconds of processor time
  const measure = () => {
    const began = process.cpuUsage();
    for (let passes = 1; ; ++passes) {
      pass();
      const {user, system} = process.cpuUsage(began);
      if (user + system >= enough) {
        return (user + system) * 1000 / passes / instants.length;
      }
    }
  };
  measure(); // lets the compiler and its threads finish first
  console.log(`${name}\t${measure().toFixed(1)}`);
  if (Number.isNaN(kept)) {
    process.exit(1); // never; keeps the work from being optimised away
  }
};
