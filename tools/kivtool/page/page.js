// The reference page: built from the model JSON with createElement and textContent only, so texts of the
// file stay texts whatever they hold.

const model = JSON.parse(document.getElementById('model').textContent);
const pageKind = document.body.dataset.kind;
const root = document.getElementById('page');

function el(tag, className, ...children) {
  const node = document.createElement(tag);
  if (className) node.className = className;
  for (const child of children) {
    if (child === null || child === undefined || child === false) continue;
    node.append(child instanceof Node ? child : String(child));
  }
  return node;
}

function attr(node, attributes) {
  for (const [name, value] of Object.entries(attributes)) node.setAttribute(name, value);
  return node;
}

function hex(number, digits) {
  return '0x' + Number(number).toString(16).toUpperCase().padStart(digits || 1, '0');
}

function table(head, rows, className) {
  const t = el('table', className);
  const tr = el('tr');
  for (const h of head) tr.append(attr(el('th', '', h), { scope: 'col' }));
  t.append(el('thead', '', tr));
  const body = el('tbody');
  for (const row of rows) body.append(row);
  t.append(body);
  return t;
}

function row(...cells) {
  const tr = el('tr');
  for (const cell of cells) tr.append(cell instanceof Node && cell.tagName === 'TD' ? cell : el('td', '', cell));
  return tr;
}

function labelled(text, control) {
  return el('label', 'control', el('span', '', text), control);
}

function searchBox(placeholder) {
  return attr(el('input', 'search'), { type: 'search', placeholder: placeholder, 'aria-label': placeholder });
}

function header(title, lines) {
  const head = el('header', 'top', el('h1', '', title));
  const shown = lines.filter(Boolean);
  if (shown.length) head.append(el('p', 'lead', ampersands(shown[0])));
  if (shown.length > 1) {
    const more = el('details', 'about', el('summary', '', 'About'));
    for (const line of shown.slice(1)) more.append(el('p', 'lead', ampersands(line)));
    head.append(more);
  }
  root.append(head);
}

// ---- value descriptors ----------------------------------------------------------------------------------

function valueRange(value) {
  if (!value) return '';
  if (value.kind === 'Choice' || value.kind === 'Bool') return '';
  if (value.kind === 'Signed') return int64Of(value.min) + ' … ' + int64Of(value.max);
  return uint64Of(value.min) + ' … ' + uint64Of(value.max);
}

function choiceList(value) {
  if (!value) return '';
  if (value.kind === 'Choice') {
    const list = el('ul', 'choices');
    for (const e of value.elements || []) list.append(el('li', '', el('code', '', e.value), ' ', choiceText(e)));
    return list;
  }
  if (value.kind === 'Bool')
    return el('ul', 'choices', el('li', '', el('code', '', '0'), ' ', boolText(value, 0n)),
      el('li', '', el('code', '', '1'), ' ', boolText(value, 1n)));
  return '';
}

function defaultText(value) {
  if (!value) return '';
  if (value.kind === 'Choice') {
    const e = (value.elements || []).find((x) => x.value === value.default);
    return e ? value.default + ' (' + choiceText(e) + ')' : String(value.default);
  }
  return String(value.default);
}

// ---- IC -------------------------------------------------------------------------------------------------

function icPage() {
  const set = model.registerSet || { registers: [], groups: [] };
  const registers = set.registers || [];
  const session = new RegisterSession(registers);
  const groups = new Map((set.groups || []).map((g) => [g.id, g.name]));
  const context = new Map(); // selector address -> text typed
  window.kivDecode = function (register, value, known) {
    const scratch = new RegisterSession(registers);
    const reg = scratch.find(register);
    if (!reg) return null;
    for (const [name, v] of Object.entries(known || {})) {
      const selector = scratch.find(name);
      if (!selector) return { error: 'no register ' + name };
      const error = scratch.set(selector, v);
      if (error) return { error: error };
    }
    const error = scratch.set(reg, value);
    if (error) return { error: error };
    return decodingJson(scratch.decode(reg, scratch.known.get(reg.address)));
  };

  header(model.name || 'IC', [
    [model.version && 'Version ' + model.version, model.author, model.date].filter(Boolean).join(' · '),
    ...(model.descriptions || [])
  ]);
  const layout = el('div', 'layout');
  const side = el('nav', 'side');
  attr(side, { 'aria-label': 'Registers' });
  const search = searchBox('Search registers, fields, addresses');
  const groupFilter = attr(el('select'), { 'aria-label': 'Group' });
  groupFilter.append(attr(el('option', '', 'All groups'), { value: '' }));
  for (const [id, name] of groups) groupFilter.append(attr(el('option', '', ampersands(name)), { value: String(id) }));
  const count = el('p', 'count');
  const list = attr(el('ul', 'reglist'), { id: 'register-list' });
  side.append(search, groupFilter, count, list);
  const main = attr(el('main', 'main'), { id: 'register-view', tabindex: '-1' });
  layout.append(side, main);
  root.append(layout);

  const items = registers.map((reg) => {
    const link = attr(el('a', '', el('code', 'addr', hex(reg.address, 2)), ' ', el('span', 'name', reg.name)),
      { href: '#' + encodeURIComponent(reg.name) });
    const item = el('li', '', link);
    item.dataset.group = String(reg.group);
    return { reg: reg, item: item, link: link, haystack: null };
  });
  list.append(...items.map((x) => x.item));

  function haystack(entry) {
    if (entry.haystack === null) {
      const parts = [entry.reg.name];
      for (const v of entry.reg.variants) {
        parts.push(v.name, ...(v.descriptions || []));
        for (const f of v.fields) {
          parts.push(f.name, f.descShort, f.descLong);
          if (f.value && f.value.elements) for (const e of f.value.elements) parts.push(choiceText(e), e.descLong);
          if (f.value && f.value.kind === 'Bool') parts.push(f.value.descFalseShort, f.value.descTrueShort);
        }
      }
      entry.haystack = ampersands(parts.join('\n')).toLowerCase();
    }
    return entry.haystack;
  }

  // "0x2C", "2c" and "44" all find the register at 44.
  function addressMatches(query, address) {
    const h = address.toString(16);
    const q = query.replace(/^0x/, '').replace(/^0+(?=.)/, '');
    if (/^0x[0-9a-f]+$/.test(query)) return q === h;
    return query.replace(/^0+(?=.)/, '') === String(address) || (/^[0-9a-f]+$/.test(query) && q === h);
  }

  function filter() {
    const query = search.value.trim().toLowerCase();
    const group = groupFilter.value;
    let shown = 0;
    for (const entry of items) {
      const visible = (!group || String(entry.reg.group) === group) &&
        (!query || addressMatches(query, entry.reg.address) || haystack(entry).includes(query));
      entry.item.hidden = !visible;
      if (visible) ++shown;
    }
    count.textContent = shown + ' of ' + registers.length + ' registers';
  }
  search.addEventListener('input', filter);
  groupFilter.addEventListener('change', filter);
  search.addEventListener('keydown', (event) => {
    if (event.key === 'ArrowDown' || event.key === 'Enter') {
      const query = search.value.trim().toLowerCase();
      const first = items.find((x) => !x.item.hidden && x.reg.name.toLowerCase() === query) ||
        items.find((x) => !x.item.hidden);
      if (first) {
        event.preventDefault();
        if (event.key === 'Enter') location.hash = first.link.getAttribute('href');
        else first.link.focus();
      }
    }
  });
  list.addEventListener('keydown', (event) => {
    if (event.key !== 'ArrowDown' && event.key !== 'ArrowUp') return;
    const visible = items.filter((x) => !x.item.hidden);
    const at = visible.findIndex((x) => x.link === document.activeElement);
    const next = visible[at + (event.key === 'ArrowDown' ? 1 : -1)];
    if (next) {
      event.preventDefault();
      next.link.focus();
    } else if (event.key === 'ArrowUp') {
      search.focus();
    }
  });

  function selectorAddresses(reg) {
    const addresses = [];
    for (const v of reg.variants) {
      for (const entry of v.impactedBy) if (!addresses.includes(entry.address)) addresses.push(entry.address);
    }
    return addresses;
  }

  function bitDiagram(reg, variant) {
    const size = Math.max(1, Math.min(64, reg.size > 0 ? reg.size : 8));
    const owner = new Array(size).fill(null);
    for (const f of variant.fields) {
      const mask = maskOf(f);
      for (let bit = 0; bit < size; ++bit) if ((mask >> BigInt(bit)) & 1n) owner[bit] = f;
    }
    const diagram = attr(el('table', 'bits'), { 'aria-label': 'Bit layout of ' + reg.name + ', ' + variant.name });
    const body = el('tbody');
    const perRow = size > 16 ? 16 : size;
    for (let top = size - 1; top >= 0; top -= perRow) {
      const low = Math.max(0, top - perRow + 1);
      const numbers = el('tr', 'bitno');
      const cells = el('tr', 'bitfields');
      for (let bit = top; bit >= low; --bit) numbers.append(el('th', '', bit));
      for (let bit = top; bit >= low;) {
        const f = owner[bit];
        let end = bit;
        while (end - 1 >= low && owner[end - 1] === f && f !== null) --end;
        const cell = el('td', f ? 'field' : 'reserved');
        cell.colSpan = bit - end + 1;
        if (f) {
          const access = f.value ? f.value.accessLetters || f.value.access : '';
          cell.append(el('span', 'fname', f.name), access ? el('span', 'acc', access) : '');
          cell.title = f.name + (f.descShort ? ': ' + ampersands(f.descShort) : '') + (access ? ' [' + access + ']' : '');
        } else {
          cell.title = 'reserved';
        }
        cells.append(cell);
        bit = end - 1;
      }
      body.append(numbers, cells);
    }
    diagram.append(body);
    return el('div', 'diagram', diagram);
  }

  function fieldTable(variant) {
    return table(['Bits', 'Field', 'Access', 'Kind', 'Range', 'Default', 'Unit', 'Choices', 'Description'],
      variant.fields.map((f) => {
        const v = f.value;
        const description = el('td', '', ampersands(f.descLong || f.descShort || ''));
        for (const alert of f.alerts || []) description.append(el('p', 'alert', '⚠ ', ampersands(alert)));
        return row(el('code', '', bitsText(maskOf(f)).replace(/^bits? /, '')), el('strong', '', f.name),
          v ? v.accessLetters || v.access : '', v ? v.kind : '', valueRange(v), defaultText(v), unitOf(v),
          el('td', '', choiceList(v)), description);
      }), 'fields');
  }

  function variantCard(reg, variant) {
    const card = el('section', 'variant');
    card.append(el('h3', '', variant.name === 'DEFAULT' && reg.variants.length === 1 ? 'Layout' : variant.name));
    if (variant.impactedBy.length) {
      const when = el('p', 'selector', 'Selected when ');
      when.append(el('code', '', variant.impactedBy.map((e) => session.conditionText(e, true)).join(' and ')));
      card.append(when);
    }
    for (const d of variant.descriptions || []) card.append(el('p', '', ampersands(d)));
    card.append(bitDiagram(reg, variant), el('div', 'scroll', fieldTable(variant)));
    return card;
  }

  function decoder(reg) {
    const box = el('section', 'decoder');
    box.append(el('h3', '', 'Decode and encode'));
    const input = attr(el('input', 'value'), { type: 'text', spellcheck: 'false', 'aria-label': 'Value of ' + reg.name,
      placeholder: 'value: 0x…, 0b… or decimal' });
    const out = el('div', 'decoded');
    const inputs = el('div', 'inputs', labelled(reg.name + ' =', input));
    const selectors = selectorAddresses(reg).filter((a) => a !== reg.address);
    const selectorInputs = selectors.map((address) => {
      const field = attr(el('input', 'value'), { type: 'text', spellcheck: 'false',
        placeholder: 'unknown', 'aria-label': 'Value of ' + session.selectorName(address) });
      field.value = context.get(address) || '';
      field.addEventListener('input', () => {
        context.set(address, field.value.trim());
        update();
      });
      inputs.append(labelled(session.selectorName(address) + ' =', field));
      return field;
    });
    if (selectorInputs.length) inputs.append(el('p', 'hint', 'The selecting registers decide the layout.'));
    box.append(inputs, out);

    function update() {
      out.replaceChildren();
      const scratch = new RegisterSession(registers);
      for (const address of selectors) {
        const text = context.get(address);
        const selector = session.byAddress.get(address);
        if (text && selector) {
          const error = scratch.set(selector, text);
          if (error) out.append(el('p', 'error', error));
        }
      }
      const text = input.value.trim();
      let value = 0n;
      if (text) {
        const error = scratch.set(reg, text);
        if (error) {
          out.append(el('p', 'error', error));
          return;
        }
        value = scratch.known.get(reg.address);
      } else {
        scratch.known.set(reg.address, 0n);
      }
      const decoding = scratch.decode(reg, value);
      const choice = decoding.choice;
      out.append(el('p', 'result', el('code', '', hexValue(value, reg.size)), ' = ', el('code', '', value.toString()),
        decoding.variant && reg.variants.length > 1 ? ', layout "' + decoding.variant.name + '"' : ''));
      if (choice.reason) out.append(el('p', choice.outcome === 'decided' ? 'reason' : 'error', choice.reason));
      for (const c of choice.candidates) out.append(el('p', 'hint', c.requirement));
      if (decoding.fields.length) {
        out.append(table(['Bits', 'Field', 'Raw', 'Set', 'Meaning'], decoding.fields.map((f) => {
          const control = fieldControl(f, (raw) => {
            const placed = shiftUsable(f.shift) ? (raw << BigInt(f.shift)) & f.mask : 0n;
            const next = (value & ~f.mask & ALL64) | placed;
            input.value = hexValue(next, reg.size);
            update();
          });
          const meaning = el('td', f.inRange ? '' : 'bad', f.text + (f.unit ? ' ' + f.unit : ''));
          if (!f.inRange && f.kind !== 'Choice') meaning.append(' (outside ' + f.range + ')');
          return row(el('code', '', bitsText(f.mask).replace(/^bits? /, '')), f.name, el('code', '', f.raw.toString()),
            el('td', '', control), meaning);
        }), 'decoded-fields'));
      }
      if (decoding.uncovered && decoding.variant)
        out.append(el('p', 'warn', 'not covered by any field: ' + hexValue(decoding.uncovered, reg.size) + ' (' +
          bitsText(decoding.uncovered) + ')'));
      for (const w of decoding.warnings) out.append(el('p', 'warn', 'warning: ' + w));
    }

    function fieldControl(f, apply) {
      const v = f.field.value;
      const width = widthOf(fieldBits(f.field));
      const options = v && v.kind === 'Choice' ? (v.elements || []).map((e) => [uint64Of(e.value), choiceText(e)])
        : v && v.kind === 'Bool' ? [[0n, boolText(v, 0n)], [1n, boolText(v, 1n)]] : null;
      if (options) {
        const select = attr(el('select'), { 'aria-label': f.name });
        if (!options.some((o) => o[0] === f.raw))
          select.append(attr(el('option', '', f.raw + ' (not listed)'), { value: f.raw.toString() }));
        for (const [raw, text] of options) {
          const option = attr(el('option', '', raw + ': ' + text), { value: raw.toString() });
          if (raw === f.raw) option.selected = true;
          select.append(option);
        }
        select.addEventListener('change', () => apply(BigInt(select.value) & lowBits(width)));
        return select;
      }
      const number = attr(el('input', 'num'), { type: 'text', 'aria-label': f.name, spellcheck: 'false' });
      number.value = f.kind === 'Signed' ? f.text : f.raw.toString();
      number.addEventListener('change', () => {
        const parsed = parseNumber(number.value.trim());
        if (!parsed) {
          number.classList.add('bad');
          return;
        }
        const raw = parsed.negative ? BigInt.asUintN(64, -parsed.magnitude) : parsed.magnitude;
        apply(raw & lowBits(width));
      });
      return number;
    }

    input.addEventListener('input', update);
    update();
    return box;
  }

  function show(reg) {
    main.replaceChildren();
    if (!reg) {
      main.append(el('p', 'hint', registers.length ? 'Pick a register from the list, or search.' : 'This IC has no registers.'));
      return;
    }
    for (const x of items) x.link.classList.toggle('current', x.reg === reg);
    const head = el('div', 'reghead', el('h2', '', reg.name));
    head.append(el('p', 'meta', 'Address ', el('code', '', hex(reg.address, 2)), ' (' + reg.address + ') · ',
      reg.size + ' bits · access ' + reg.access + (groups.has(reg.group) ? ' · ' + ampersands(groups.get(reg.group)) : '')));
    const selectors = selectorAddresses(reg);
    if (selectors.length)
      head.append(el('p', 'meta', 'Layout chosen by ', selectors.map((a) => session.selectorName(a)).join(', ')));
    main.append(head, decoder(reg));
    const cards = el('div', reg.variants.length > 1 ? 'variants side' : 'variants');
    for (const v of reg.variants) cards.append(variantCard(reg, v));
    main.append(cards);
  }

  function fromHash() {
    const name = decodeURIComponent(location.hash.slice(1));
    const reg = name ? session.find(name) : null;
    show(reg || (name ? null : registers[0]));
    if (reg && document.activeElement && document.activeElement.closest && document.activeElement.closest('#register-list'))
      main.focus({ preventScroll: true });
  }
  window.addEventListener('hashchange', fromHash);
  filter();
  fromHash();
}

// ---- module ---------------------------------------------------------------------------------------------

function sortableTable(head, records, cellsOf, keysOf) {
  const t = table(head.map((h) => h), [], 'params');
  const body = t.tBodies[0];
  let sortColumn = -1;
  let ascending = true;
  const rows = records.map((r) => ({ record: r, tr: row(...cellsOf(r)), keys: keysOf(r) }));
  body.append(...rows.map((r) => r.tr));
  t.querySelectorAll('th').forEach((th, column) => {
    const text = th.textContent;
    const button = attr(el('button', 'sort', text), { type: 'button' });
    th.replaceChildren(button);
    button.addEventListener('click', () => {
      ascending = sortColumn === column ? !ascending : true;
      sortColumn = column;
      t.querySelectorAll('th').forEach((h) => h.removeAttribute('aria-sort'));
      th.setAttribute('aria-sort', ascending ? 'ascending' : 'descending');
      rows.sort((a, b) => {
        const x = a.keys[column];
        const y = b.keys[column];
        const order = typeof x === 'number' && typeof y === 'number' ? x - y : String(x).localeCompare(String(y));
        return ascending ? order : -order;
      });
      body.append(...rows.map((r) => r.tr));
    });
  });
  return { table: t, rows: rows };
}

function section(id, title, ...content) {
  return attr(el('section', 'block', el('h2', '', title), ...content), { id: id });
}

function modulePage() {
  header(model.name || 'Module', [
    [model.version, model.nameOfFirmwareType && 'firmware ' + model.nameOfFirmwareType].filter(Boolean).join(' · ')
  ]);
  const nav = attr(el('nav', 'tabs'), { 'aria-label': 'Sections' });
  root.append(nav);
  const parts = [];
  const params = [];
  for (const block of model.axisParameters || [])
    for (const p of block.parameters || []) params.push({ where: 'Axis ' + block.axis, p: p });
  for (const bank of model.globalParameters || [])
    for (const p of bank.parameters || []) params.push({ where: 'Bank ' + bank.bank, p: p });

  const search = searchBox('Filter parameters by name, number or text');
  const where = attr(el('select'), { 'aria-label': 'Axis or bank' });
  where.append(attr(el('option', '', 'All axes and banks'), { value: '' }));
  for (const w of [...new Set(params.map((x) => x.where))]) where.append(attr(el('option', '', w), { value: w }));
  const access = attr(el('select'), { 'aria-label': 'Access' });
  access.append(attr(el('option', '', 'Any access'), { value: '' }));
  for (const a of [...new Set(params.map((x) => (x.p.value ? x.p.value.accessLetters : '')))].filter(Boolean).sort())
    access.append(attr(el('option', '', a), { value: a }));
  const count = el('p', 'count');
  const sorted = sortableTable(['Where', 'No.', 'Name', 'Access', 'Min', 'Max', 'Default', 'Unit', 'Choices', 'Description'],
    params,
    (x) => {
      const v = x.p.value;
      return [x.where, x.p.type, el('td', 'pname', el('strong', '', ampersands(x.p.name)),
        x.p.identifier ? el('code', 'ident', x.p.identifier) : ''),
      v ? v.accessLetters : '', v && v.kind !== 'Choice' && v.kind !== 'Bool' ? String(v.kind === 'Signed' ? int64Of(v.min) : uint64Of(v.min)) : '',
      v && v.kind !== 'Choice' && v.kind !== 'Bool' ? String(v.kind === 'Signed' ? int64Of(v.max) : uint64Of(v.max)) : '',
      defaultText(v), v ? ampersands(unitOf(v) || (v.kind === 'Choice' ? v.unit : '')) : '', el('td', '', choiceList(v)),
      ampersands((x.p.descriptions || []).join('\n'))];
    },
    (x) => [x.where, x.p.type, x.p.name, x.p.value ? x.p.value.accessLetters : '', x.p.value ? x.p.value.min : 0,
      x.p.value ? x.p.value.max : 0, x.p.value ? x.p.value.default : 0, '', '', '']);
  for (const r of sorted.rows) {
    r.haystack = ampersands([r.record.p.name, r.record.p.identifier, r.record.p.type, ...(r.record.p.descriptions || []),
      ...((r.record.p.value && r.record.p.value.elements) || []).map((e) => e.descShort)].join('\n')).toLowerCase();
  }
  function filter() {
    const q = search.value.trim().toLowerCase();
    let shown = 0;
    for (const r of sorted.rows) {
      const visible = (!where.value || r.record.where === where.value) &&
        (!access.value || (r.record.p.value && r.record.p.value.accessLetters === access.value)) &&
        (!q || r.haystack.includes(q));
      r.tr.hidden = !visible;
      if (visible) ++shown;
    }
    count.textContent = shown + ' of ' + params.length + ' parameters';
  }
  search.addEventListener('input', filter);
  where.addEventListener('change', filter);
  access.addEventListener('change', filter);
  filter();
  parts.push(section('parameters', 'Parameters', el('div', 'filters', search, where, access, count),
    el('div', 'scroll', sorted.table)));

  const objects = model.canopenObjects || [];
  if (objects.length) {
    const filterObjects = searchBox('Filter objects');
    const rows = objects.map((o) => {
      const entries = el('ul', 'entries');
      for (const e of o.entries || [])
        entries.append(el('li', '', el('code', '', 'sub ' + e.subIndex), ' ', ampersands(e.name),
          e.value ? ' · ' + e.value.kind + ' ' + valueRange(e.value) + ' ' + (e.value.accessLetters || '') : '',
          e.pdoMapped ? ' · PDO' : ''));
      const tr = row(el('code', '', hex(o.index, 4)), el('strong', '', ampersands(o.name)), o.objectType, o.dataType,
        o.segmentName, el('td', '', ampersands((o.descriptions || []).join('\n')), entries));
      tr.dataset.text = ampersands([hex(o.index, 4), o.name, ...(o.entries || []).map((e) => e.name)].join('\n')).toLowerCase();
      return tr;
    });
    filterObjects.addEventListener('input', () => {
      const q = filterObjects.value.trim().toLowerCase();
      for (const tr of rows) tr.hidden = q !== '' && !tr.dataset.text.includes(q);
    });
    parts.push(section('canopen', 'CANopen objects', filterObjects,
      el('div', 'scroll', table(['Index', 'Name', 'Object', 'Data type', 'Segment', 'Entries'], rows, 'params'))));
  }

  const io = [['digitalInputs', 'Digital inputs'], ['digitalOutputs', 'Digital outputs'], ['analogInputs', 'Analog inputs'],
    ['irqs', 'Interrupts'], ['coordinates', 'Coordinates']].filter(([key]) => (model[key] || []).length);
  if (io.length) {
    const blocks = io.map(([key, title]) => el('div', 'ioblock', el('h3', '', title),
      table(['No.', 'Name', 'Access', 'Range', 'Description'], model[key].map((p) => row(p.type,
        el('strong', '', ampersands(p.name)), p.value ? p.value.accessLetters : '', valueRange(p.value),
        ampersands((p.descriptions || []).join('\n')))), 'params')));
    parts.push(section('io', 'I/O', ...blocks));
  }

  const drives = model.driveConfigurations || [];
  if (drives.length) {
    const names = new Map(params.filter((x) => x.where.startsWith('Axis')).map((x) => [x.p.type, x.p.name]));
    parts.push(section('drives', 'Drive configurations', ...drives.map((d) => el('div', 'drive',
      el('h3', '', d.id + ': ' + ampersands(d.name)),
      ...(d.apSettings || []).map((g) => el('div', '', el('h4', '', ampersands(g.name)),
        table(['Axis parameter', 'Value'], (g.settings || []).map((s) => row(
          s.type + (names.has(s.type) ? ' ' + ampersands(names.get(s.type)) : ''), s.value)), 'params')))))));
  }
  for (const part of parts) {
    nav.append(attr(el('a', '', part.querySelector('h2').textContent), { href: '#' + part.id }));
    root.append(part);
  }
}

// ---- ESI ------------------------------------------------------------------------------------------------

function esiPage() {
  header('ESI ' + (model.VID !== undefined ? 'vendor ' + hex(model.VID, 8) : 'file'), []);
  const search = searchBox('Filter objects by name or index');
  const count = el('p', 'count');
  root.append(el('div', 'filters', search, count));
  const rows = [];
  let device = 0;
  for (const section of model.EtherCATInfo || []) {
    for (const d of section.Descriptions || []) {
      ++device;
      const block = el('section', 'block');
      block.append(el('h2', '', 'Device ' + device), el('p', 'meta', 'Product code ', el('code', '', hex(d.ProductCode >>> 0, 8)),
        ' · revision ', el('code', '', hex(d.RevisionNo >>> 0, 8))));
      if (!(d.Device || []).length) block.append(el('p', 'hint', 'No profile.'));
      for (const profile of d.Device || []) {
        block.append(el('h3', '', 'Profile ' + (profile.ProfileNo || '–')));
        const types = new Map((profile.__Dictionary || []).map((t) => [t.Name, t]));
        const objects = (profile.Dictionary || []).map((o) => {
          const info = el('ul', 'entries');
          for (const name of o.Info || []) info.append(el('li', '', name));
          const tr = row(el('code', '', hex(o.Index, 4)), el('strong', '', o.Name), o.BitSize, o.DefaultValue, el('td', '', info));
          tr.dataset.text = [hex(o.Index, 4), o.Name, ...(o.Info || [])].join('\n').toLowerCase();
          rows.push(tr);
          return tr;
        });
        block.append(el('h4', '', 'Objects'), el('div', 'scroll', table(['Index', 'Name', 'Bits', 'Default', 'Sub-items'], objects, 'params')));
        if (types.size) {
          block.append(el('h4', '', 'Data types'), el('div', 'scroll', table(['Type', 'Bits', 'Sub-items'],
            [...types.values()].map((t) => row(el('code', '', t.Name), t.BitSize, el('td', '', table(['Name', 'Type', 'Bits', 'Offset'],
              (t.SubItem || []).map((s) => row(s.Name, s.Type, s.BitSize, s.BitOffs)), 'sub')))), 'params')));
        }
      }
      root.append(block);
    }
  }
  function filter() {
    const q = search.value.trim().toLowerCase();
    let shown = 0;
    for (const tr of rows) {
      tr.hidden = q !== '' && !tr.dataset.text.includes(q);
      if (!tr.hidden) ++shown;
    }
    count.textContent = shown + ' of ' + rows.length + ' objects';
  }
  search.addEventListener('input', filter);
  filter();
}

if (pageKind === 'ic') icPage();
else if (pageKind === 'module') modulePage();
else esiPage();
document.body.classList.add('ready');
performance.mark('kiv-ready');
