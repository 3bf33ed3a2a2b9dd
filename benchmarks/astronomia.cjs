const {base, moonillum, moonphase, moonposition, solar} = require('astronomia');
const {run} = require('./comparison.cjs');

const LUNATION = 1 / 12.3685; // years, as in the library
const ASTRONOMICAL_UNIT = 149597870.7; // km

/** The last and the next instant of a phase; find(year) gives only the one nearest to a year. */
const around = (find, jd) => {
  const year = 2000 + (jd - 2451545) / 365.25;
  const nearest = find(year);
  return nearest <= jd ? [nearest, find(year + LUNATION)] : [find(year - LUNATION), nearest];
};

// The lit fraction from the positions of the Moon and the Sun, which Tidewell computes too.
run('astronomia', (jd) => {
  const T = base.J2000Century(jd);
  const sun = new base.Coord(solar.apparentLongitude(T), 0, solar.radius(T) * ASTRONOMICAL_UNIT);
  const phaseAngle = moonillum.phaseAngleEcliptic(moonposition.position(jd), sun);
  return [base.illuminated(phaseAngle), ...around(moonphase.newMoon, jd), ...around(moonphase.full, jd)];
});
