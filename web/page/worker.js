// Runs in the worker, behind the interpreter's own script: draws one file, or what differs between
// two, and then answers what lies where. Speaks with the page by messages only.
(() => {
  'use strict';

  const LEAST_PAUSE = 100; // milliseconds between two reports of progress
  const MOST_DIFFERENCES = 1000; // that are listed
  let interpreter = null;
  let isComparison = false;

  function tell(type, content = {}) {
    self.postMessage({ type, ...content });
  }

  const text = (address) => interpreter.UTF8ToString(address);
  const list = (length, make) => Array.from({ length }, (_, i) => make(i));

  // What the interpreter calls while it draws.
  function makeHost(seconds) {
    const deadline = performance.now() + seconds * 1000;
    let chunks = [];
    let reported = 0;
    let isLate = false;
    return {
      takeBytes(bytes) {
        chunks.push(bytes);
      },
      takePage(area) {
        tell('page', { area, svg: new Blob(chunks, { type: 'image/svg+xml' }) });
        chunks = [];
      },
      progress(bytes) {
        const now = performance.now();
        if (now - reported >= LEAST_PAUSE) {
          reported = now;
          tell('progress', { bytes });
        }
        isLate = isLate || now > deadline;
        return !isLate;
      },
      fail(reason) {
        tell('failure', { reason });
      },
    };
  }

  // Whether the interpreter has the bytes of a file; if not, it has said why.
  function take(bytes, side) {
    const place = interpreter._malloc(Math.max(bytes.byteLength, 1));
    if (place === 0) {
      tell('failure', { reason: 'it needs more memory than a browser gives' });
      return false;
    }
    interpreter.HEAPU8.set(bytes, place);
    const isTaken = interpreter._TakeFile(side, place, bytes.byteLength) !== 0;
    interpreter._free(place);
    return isTaken;
  }

  async function open({ library, files, seconds }) {
    isComparison = files.length === 2;
    interpreter = await createInterpreter({
      host: makeHost(seconds),
      instantiateWasm(imports, receive) {
        WebAssembly.instantiate(library, imports).then(receive, fail);
        return {};
      },
    });
    if (!files.every(take)) return;
    const isDrawn = isComparison ? interpreter._CompareFiles() : interpreter._DrawFile();
    if (!isDrawn) return;
    const ends = list(files.length, describeEnd);
    if (isComparison) tell('drawn', { ends, comparison: describeComparison() });
    else tell('drawn', { ends, findings: describeFindings() });
  }

  function describeEnd(side) {
    return {
      result: interpreter._EndResult(side),
      error: text(interpreter._EndError(side)),
      place: interpreter._EndPlace(side),
      startsLikePostScript: interpreter._StartsLikePostScript(side) !== 0,
      isIndexed: interpreter._IndexIsComplete(side) !== 0,
      lostPoints: interpreter._LostPoints(side),
    };
  }

  function describeFindings() {
    const items = list(interpreter._FindingCount(), describeFinding);
    return { items, drawn: text(interpreter._DrawingInWords()) };
  }

  function describeFinding(i) {
    return {
      severity: text(interpreter._SeverityOfFinding(i)),
      meaning: text(interpreter._MeaningOfFinding(i)),
      name: text(interpreter._NameOfFinding(i)),
      times: interpreter._TimesOfFinding(i),
      places: list(interpreter._PlacesOfFinding(i), (place) => interpreter._PlaceOfFinding(i, place)),
    };
  }

  function describeShape(side, shape) {
    return {
      side,
      kind: text(interpreter._KindOfShape(side, shape)),
      page: interpreter._PageOfShape(side, shape),
      width: interpreter._WidthOfShape(side, shape),
      place: interpreter._PlaceOfShape(side, shape),
      definition: interpreter._DefinitionOfShape(side, shape),
    };
  }

  function withOutline(side, shape) {
    const outline = text(interpreter._OutlineOfShape(side, shape));
    return { ...describeShape(side, shape), outline };
  }

  // What `describe(side, shape)` says of the shapes of a difference: of one, or of the earlier and
  // the later one.
  function shapesOfDifference(number, describe) {
    const shapes = [0, 1].map((side) => interpreter._ShapeOfDifference(number, side));
    return shapes.flatMap((shape, side) => (shape < 0 ? [] : [describe(side, shape)]));
  }

  function describeDifference(number) {
    const describe = (side, shape) => ({
      ...describeShape(side, shape),
      description: text(interpreter._DescriptionOfShape(side, shape)),
    });
    const what = text(interpreter._WhatDiffers(number));
    return { number, what, shapes: shapesOfDifference(number, describe) };
  }

  function describeComparison() {
    const count = interpreter._DifferenceCount();
    return {
      count,
      added: interpreter._AddedCount(),
      removed: interpreter._RemovedCount(),
      differences: list(Math.min(count, MOST_DIFFERENCES), describeDifference),
      pages: list(interpreter._PageCount(), interpreter._NumberOfPage),
    };
  }

  // The shapes that bytes of a file draw; else the first that is drawn behind them.
  function drawnBy({ side, first, end, most }) {
    const shapes = [];
    let next = -1;
    const count = interpreter._ShapeCount(side);
    for (let shape = 0; shape < count && shapes.length < most; ++shape) {
      const place = interpreter._PlaceOfShape(side, shape);
      const definition = interpreter._DefinitionOfShape(side, shape);
      const isIn = (byte) => byte >= first && byte < end;
      if (isIn(place) || isIn(definition)) shapes.push(withOutline(side, shape));
      if (next < 0 && place >= end) next = shape;
    }
    const hasNext = shapes.length === 0 && next >= 0;
    return { shapes, next: hasNext ? withOutline(side, next) : null };
  }

  const answers = {
    // The shapes at a point of a page, uppermost first, and the number of the difference between
    // them.
    at({ page, x, y, reach }) {
      if (isComparison) {
        const number = interpreter._FindDifference(page, x, y, reach);
        return { number, shapes: number < 0 ? [] : shapesOfDifference(number, withOutline) };
      }
      const shape = interpreter._FindShape(page, x, y, reach);
      return { number: -1, shapes: shape < 0 ? [] : [withOutline(0, shape)] };
    },
    difference: ({ number }) => shapesOfDifference(number, withOutline),
    drawnBy,
  };

  function fail(error) {
    const isMemory = /memory|allocation/i.test(String(error));
    const reason = isMemory
      ? 'it needs more memory than a browser gives'
      : `the interpreter ended: ${error}`;
    tell('failure', { reason });
  }

  self.onmessage = ({ data }) => {
    if (data.type === 'open') open(data).catch(fail);
    else tell('answer', { question: data.question, answer: answers[data.type](data) });
  };
})();
