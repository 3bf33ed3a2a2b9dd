// Measures a library: `node libraries.cjs NAME` prints the name and the processor time of the work of one report in
// microseconds. With --answers it prints the answers instead, like swiss_ephemeris.cpp.

const J2000 = 2451545;

// For each library a function of a Julian day: [lit fraction, last New, next New, last Full, next Full].
const libraries = {
  astronomia() {
    const {base, moonillum, moonphase, moonposition, solar} = require('astronomia');
    const LUNATION = 1 / 12.3685; // years, as in the library
    const ASTRONOMICAL_UNIT = 149597870.7; // km

    // The last and the next instant of a phase; find(year) gives only the one nearest to a year.
    const around = (find, jd) => {
      const year = 2000 + (jd - J2000) / 365.25;
      const nearest = find(year);
      return nearest <= jd ? [nearest, find(year + LUNATION)] : [find(year - LUNATION), nearest];
    };
    // The lit fraction from the positions of the Moon and the Sun, which Tidewell computes too.
    return (jd) => {
      const T = base.J2000Century(jd);
      const sun = new base.Coord(solar.apparentLongitude(T), 0, solar.radius(T) * ASTRONOMICAL_UNIT);
      const phaseAngle = moonillum.phaseAngleEcliptic(moonposition.position(jd), sun);
      return [base.illuminated(phaseAngle), ...around(moonphase.newMoon, jd), ...around(moonphase.full, jd)];
    };
  },

  'astronomy-engine'() {
    const {Body, Illumination, MakeTime, SearchMoonPhase} = require('astronomy-engine');
    const LIMIT = 40; // days; more than a lunation
    return (jd) => {
      const now = MakeTime(jd - J2000);
      const find = (elongation, limit) => SearchMoonPhase(elongation, now, limit).ut + J2000;
      return [
        Illumination(Body.Moon, now).phase_fraction,
        find(0, -LIMIT), find(0, LIMIT), find(180, -LIMIT), find(180, LIMIT),
      ];
    };
  },
};

const [name, answers] = process.argv.slice(2);
const answer = libraries[name]();
// The same instants as InstantsOfComparison in comparison.h.
const instants = Array.from({length: 1000}, (_, i) => 2415020.5 + 365.2425 * (50 + 100 * (i + 0.5) / 1000));

let kept = 0; // keeps the work from being optimised away
const measure = () => {
  const began = process.cpuUsage();
  for (let passes = 1; ; ++passes) {
    for (const jd of instants) {
      kept += answer(jd)[0];
    }
    const {user, system} = process.cpuUsage(began);
    if (user + system >= 1e6) { // microseconds
      return (user + system) / passes / instants.length;
    }
  }
};

if (answers) {
  for (const jd of instants) {
    console.log([name, ...[jd, ...answer(jd)].map((value) => value.toFixed(9))].join('\t'));
  }
} else {
  measure(); // lets the compiler and its threads finish first
  console.log(`${name}\t${measure().toFixed(4)}`);
  process.exitCode = Number.isNaN(kept) ? 1 : 0;
}
