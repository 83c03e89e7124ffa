// Lengths in points, 72 to the inch, as people read them.

export const POINTS_PER_MILLIMETRE = 72 / 25.4;

export function millimetres(points) {
  return (points / POINTS_PER_MILLIMETRE).toFixed(2);
}

// A length in both units.
export function length(points) {
  return `${millimetres(points)} mm (${points.toFixed(2)} pt)`;
}

export function pair(x, y) {
  return `${millimetres(x)}, ${millimetres(y)} mm (${x.toFixed(2)}, ${y.toFixed(2)} pt)`;
}

export function size(width, height) {
  const points = `${Number(width.toFixed(3))} × ${Number(height.toFixed(3))} pt`;
  return `${millimetres(width)} × ${millimetres(height)} mm (${points})`;
}
