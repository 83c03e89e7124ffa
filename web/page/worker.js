// Runs in the worker, behind the interpreter's own script: draws one file and then answers what lies
// where in it. Speaks with the page by messages only.
(() => {
  'use strict';

  const LEAST_PAUSE = 100; // milliseconds between two reports of progress
  let interpreter = null;

  function tell(type, content = {}, transfer = []) {
    self.postMessage({ type, ...content }, transfer);
  }

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

  async function open({ library, bytes, seconds }) {
    interpreter = await createInterpreter({
      host: makeHost(seconds),
      instantiateWasm(imports, receive) {
        WebAssembly.instantiate(library, imports).then(receive, fail);
        return {};
      },
    });
    const place = interpreter._malloc(Math.max(bytes.byteLength, 1));
    if (place === 0) {
      tell('failure', { reason: 'it needs more memory than a browser gives' });
      return;
    }
    interpreter.HEAPU8.set(new Uint8Array(bytes), place);
    const isDrawn = interpreter._OpenFile(place, bytes.byteLength);
    interpreter._free(place);
    if (!isDrawn) return;
    tell('drawn', {
      result: interpreter._EndResult(),
      error: interpreter.UTF8ToString(interpreter._EndError()),
      place: interpreter._EndPlace(),
      startsLikePostScript: interpreter._StartsLikePostScript() !== 0,
      isIndexed: interpreter._IndexIsComplete() !== 0,
      lostPoints: interpreter._LostPoints(),
      findings: Array.from({ length: interpreter._FindingCount() }, (_, i) => finding(i)),
    });
  }

  function finding(i) {
    const text = (address) => interpreter.UTF8ToString(address);
    const places = { length: interpreter._PlacesOfFinding(i) };
    return {
      severity: text(interpreter._SeverityOfFinding(i)),
      meaning: text(interpreter._MeaningOfFinding(i)),
      name: text(interpreter._NameOfFinding(i)),
      detail: text(interpreter._DetailOfFinding(i)),
      times: interpreter._TimesOfFinding(i),
      ratio: interpreter._RatioOfFinding(i),
      places: Array.from(places, (_, place) => interpreter._PlaceOfFinding(i, place)),
    };
  }

  function describe(shape) {
    if (shape < 0) return null;
    return {
      shape,
      kind: ['stroke', 'fill', 'fill', 'image'][interpreter._KindOfShape(shape)],
      page: interpreter._PageOfShape(shape),
      width: interpreter._WidthOfShape(shape),
      place: interpreter._PlaceOfShape(shape),
      definition: interpreter._DefinitionOfShape(shape),
      outline: interpreter.UTF8ToString(interpreter._OutlineOfShape(shape)),
    };
  }

  // The shapes that bytes of the file draw; else the first that is drawn behind them.
  function drawnBy({ first, end, most }) {
    const shapes = [];
    let next = -1;
    const count = interpreter._ShapeCount();
    for (let shape = 0; shape < count && shapes.length < most; ++shape) {
      const place = interpreter._PlaceOfShape(shape);
      const definition = interpreter._DefinitionOfShape(shape);
      const isIn = (byte) => byte >= first && byte < end;
      if (isIn(place) || isIn(definition)) shapes.push(describe(shape));
      if (next < 0 && place >= end) next = shape;
    }
    return { shapes, next: shapes.length > 0 ? null : describe(next) };
  }

  const answers = {
    shapeAt: ({ page, x, y, reach }) => describe(interpreter._FindShape(page, x, y, reach)),
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
