const {Body, Illumination, MakeTime, SearchMoonPhase} = require('astronomy-engine');
const {run} = require('./comparison.cjs');

const J2000 = 2451545; // the library counts its days from here
const LIMIT = 40; // days; more than a lunation

run('astronomy-engine', (jd) => {
  const now = MakeTime(jd - J2000);
  const find = (elongation, limit) => SearchMoonPhase(elongation, now, limit).ut + J2000;
  return [
    Illumination(Body.Moon, now).phase_fraction,
    find(0, -LIMIT), find(0, LIMIT), find(180, -LIMIT), find(180, LIMIT),
  ];
});
