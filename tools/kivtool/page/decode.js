// Register decoding, the same rules and texts as the library's RegisterValues and "kivtool decode --json".
// Values are BigInts of 64 bits; numbers of the model above 2^53 come from their hexadecimal texts.

const ALL64 = (1n << 64n) - 1n;

function lowBits(width) {
  return width >= 64 ? ALL64 : (1n << BigInt(width)) - 1n;
}

function widthOf(bits) {
  let width = 0;
  for (; bits !== 0n; bits >>= 1n) ++width;
  return width;
}

function shiftUsable(shift) {
  return shift >= 0 && shift < 64;
}

function shiftedDown(value, mask, shift) {
  return shiftUsable(shift) ? (value & mask) >> BigInt(shift) : 0n;
}

function signExtended(raw, width) {
  if (width <= 0 || width >= 64) return BigInt.asIntN(64, raw);
  const sign = 1n << BigInt(width - 1);
  return BigInt.asIntN(64, (raw & sign) ? (raw | (ALL64 & ~lowBits(width))) : raw);
}

// A mask of the model: the number when it is exact, else its hexadecimal text.
function maskOf(item) {
  if (Number.isSafeInteger(item.mask) && item.mask >= 0) return BigInt(item.mask);
  const text = String(item.maskText || '0').replace(/^0x/i, '');
  try {
    return BigInt('0x' + (text || '0')) & ALL64;
  } catch (e) {
    return 0n;
  }
}

// A 64-bit number of the model read back from its double: the extremes round up past the type's end.
function int64Of(number) {
  if (typeof number !== 'number' || !isFinite(number)) return 0n;
  const big = BigInt(Math.trunc(number));
  const top = (1n << 63n) - 1n;
  return big > top ? top : big < -(1n << 63n) ? -(1n << 63n) : big;
}

function uint64Of(number) {
  if (typeof number === 'number' && number >= 9223372036854775808) {
    const big = BigInt(number);
    return big > ALL64 ? ALL64 : big;
  }
  return BigInt.asUintN(64, int64Of(number));
}

function sizeMask(size) {
  return size <= 0 ? ALL64 : lowBits(size);
}

function hexValue(value, size) {
  const digits = size <= 0 ? 1 : Math.min(16, Math.floor((size + 3) / 4));
  return '0x' + value.toString(16).toUpperCase().padStart(digits, '0');
}

function bitsText(mask) {
  if (mask === 0n) return 'no bits';
  let low = 0;
  while (!((mask >> BigInt(low)) & 1n)) ++low;
  const high = widthOf(mask) - 1;
  if ((mask >> BigInt(low)) === lowBits(high - low + 1)) {
    if (low === high) return 'bit ' + low;
    return 'bits ' + low + '-' + high;
  }
  return 'bits ' + hexValue(mask, 0);
}

// Decimal, 0x hexadecimal or 0b binary with an optional "-" and "_" between digits; null when not a number
// or wider than 64 bits.
function parseNumber(text) {
  let digits = String(text);
  const negative = digits.startsWith('-');
  if (negative) digits = digits.slice(1);
  let prefix = '';
  if (/^0x/i.test(digits)) prefix = '0x';
  else if (/^0b/i.test(digits)) prefix = '0b';
  if (prefix) digits = digits.slice(2);
  digits = digits.split('_').join('');
  if (!digits) return null;
  const valid = prefix === '0x' ? /^[0-9a-fA-F]+$/ : prefix === '0b' ? /^[01]+$/ : /^[0-9]+$/;
  if (!valid.test(digits)) return null;
  const magnitude = BigInt(prefix + digits);
  if (magnitude > ALL64) return null;
  return { magnitude: magnitude, negative: negative };
}

function ampersands(text) {
  return String(text).split('\\x26').join('&');
}

function quoted(name) {
  return '"' + name + '"';
}

function choiceText(element) {
  const text = ampersands(element.descShort || '');
  return text || String(element.value);
}

function boolText(value, raw) {
  const text = raw === 0n ? value.descFalseShort : value.descTrueShort;
  return text || (raw === 0n ? 'low' : 'high');
}

// "YYYY-MM-DD" and "HH:MM:SS" of nibbles, each nibble its own decimal number.
function nibbleGroups(value, top, sizes, separator) {
  const parts = [];
  let nibble = top;
  for (const size of sizes) {
    let part = '';
    for (let n = nibble; n > nibble - size; --n) part += String(Number((value >> BigInt(4 * n)) & 15n));
    parts.push(part);
    nibble -= size;
  }
  return parts.join(separator);
}

function readOutText(kind, raw) {
  const word = raw & 0xFFFFFFFFn;
  if (kind === 'Date') return nibbleGroups(word, 7, [4, 2, 2], '-');
  if (kind === 'Time') return nibbleGroups(word, 5, [2, 2, 2], ':');
  if (kind === 'Version') {
    const half = (from) => BigInt(nibbleGroups(word, from, [4], '')).toString();
    return half(7) + '.' + half(3);
  }
  let text = '';
  for (let shift = 56n; shift >= 0n; shift -= 8n) {
    const byte = Number((raw >> shift) & 0xFFn);
    if (byte === 0) continue;
    text += byte >= 33 && byte <= 127 ? String.fromCharCode(byte) : '?';
  }
  return text;
}

function unitOf(value) {
  if (!value || !(value.present || []).includes('unit')) return '';
  let unit = value.unit || '';
  if (unit.startsWith('[') && unit.endsWith(']')) unit = unit.slice(1, -1);
  return unit;
}

function fieldBits(field) {
  return shiftUsable(field.shift) ? maskOf(field) >> BigInt(field.shift) : 0n;
}

// text, kind, range and inRange of a field's raw value
function describe(field, out) {
  const value = field.value;
  if (!value) {
    out.kind = 'none';
    out.text = out.raw.toString();
    return;
  }
  out.kind = value.kind;
  out.unit = unitOf(value);
  const width = widthOf(fieldBits(field));
  switch (value.kind) {
    case 'Signed': {
      const number = signExtended(out.raw, width);
      const min = int64Of(value.min);
      const max = int64Of(value.max);
      out.text = number.toString();
      out.inRange = number >= min && number <= max;
      out.range = min + ' to ' + max;
      return;
    }
    case 'Bool':
      out.text = boolText(value, out.raw);
      out.inRange = out.raw <= 1n;
      out.range = '0 to 1';
      return;
    case 'Choice': {
      const element = (value.elements || []).find((e) => uint64Of(e.value) === out.raw);
      out.text = element ? choiceText(element) : 'not a listed choice';
      out.inRange = !!element;
      out.range = 'a listed choice';
      return;
    }
    case 'Unsigned':
    case 'Date':
    case 'Time':
    case 'Version':
    case 'ASCII': {
      const min = uint64Of(value.min);
      const max = uint64Of(value.max);
      out.text = value.kind === 'Unsigned' ? out.raw.toString() : readOutText(value.kind, out.raw);
      out.inRange = out.raw >= min && out.raw <= max;
      out.range = min + ' to ' + max;
      return;
    }
    default:
      out.text = out.raw.toString();
  }
}

function rangeProblem(name, field) {
  const raw = field.raw.toString();
  if (field.kind === 'Choice') return name + ' = ' + raw + ' is not a listed choice';
  const numeric = field.kind === 'Signed' || field.kind === 'Unsigned';
  return name + ' = ' + (numeric ? field.text : raw + ' (' + field.text + ')') + ' is outside ' + field.range;
}

// A decoding session over the IC's registers: known values by address, as RegisterValues keeps them.
class RegisterSession {
  constructor(registers) {
    this.registers = registers;
    this.byAddress = new Map();
    this.byName = new Map();
    for (const reg of registers) {
      if (!this.byAddress.has(reg.address)) this.byAddress.set(reg.address, reg);
      if (!this.byName.has(reg.name)) this.byName.set(reg.name, reg);
    }
    this.known = new Map();
  }

  find(nameOrAddress) {
    if (typeof nameOrAddress === 'number') return this.byAddress.get(nameOrAddress) || null;
    const text = String(nameOrAddress);
    if (this.byName.has(text)) return this.byName.get(text);
    if (/^[0-9]/.test(text)) {
      const number = parseNumber(text);
      if (number && !number.negative && number.magnitude <= 0xFFFFFFFFn)
        return this.byAddress.get(Number(number.magnitude)) || null;
      return null;
    }
    const folded = text.toLowerCase();
    for (const reg of this.registers) {
      if (reg.name.toLowerCase() === folded) return reg;
    }
    return null;
  }

  // The value as a number or text, negative ones as two's complement over the register's size; an error
  // text when it does not fit.
  set(reg, value) {
    const number = parseNumber(typeof value === 'bigint' ? value.toString() : String(value));
    if (!number) return reg.name + ': ' + quoted(String(value)) + ' is not a number';
    const allowed = sizeMask(reg.size);
    const bits = number.negative ? BigInt.asUintN(64, -number.magnitude) : number.magnitude;
    const fits = number.negative ? allowed === ALL64 || number.magnitude <= (allowed >> 1n) + 1n
      : (bits & ~allowed & ALL64) === 0n;
    if (!fits) return reg.name + ': ' + value + " does not fit the register's " + reg.size + ' bits';
    this.known.set(reg.address, bits & allowed);
    return '';
  }

  selectorName(address) {
    const reg = this.byAddress.get(address);
    return reg ? reg.name : 'register ' + hexValue(BigInt(address), 8) + ' (not in this IC)';
  }

  conditionText(entry, withRegister) {
    let text = withRegister ? this.selectorName(entry.address) + ' ' : '';
    const mask = maskOf(entry);
    text += bitsText(mask);
    const selector = this.byAddress.get(entry.address);
    if (selector) {
      search: for (const variant of selector.variants) {
        for (const field of variant.fields) {
          if (maskOf(field) === mask) {
            text += ' (' + field.name + ')';
            break search;
          }
        }
      }
    }
    const from = uint64Of(entry.rangeFrom);
    const to = uint64Of(entry.rangeTo);
    text += ' = ' + from;
    if (to !== from) text += ' to ' + to;
    return text;
  }

  chooseVariant(reg) {
    const choice = { outcome: 'none', variant: null, candidates: [], reason: '' };
    const variants = reg.variants;
    if (variants.length === 0) {
      choice.reason = reg.name + ' has no variant';
      return choice;
    }
    if (variants.length === 1) {
      choice.outcome = 'decided';
      choice.variant = variants[0];
      return choice;
    }
    const matched = [];
    const matchedBecause = [];
    const needs = [];
    const actual = [];
    for (const variant of variants) {
      let excluded = false;
      const unknown = [];
      const held = [];
      const conditions = [];
      for (const entry of variant.impactedBy) {
        conditions.push(this.conditionText(entry, true));
        if (!this.known.has(entry.address)) {
          const selector = this.selectorName(entry.address);
          if (!unknown.includes(selector)) unknown.push(selector);
          continue;
        }
        const selected = shiftedDown(this.known.get(entry.address), maskOf(entry), entry.shift);
        if (selected >= uint64Of(entry.rangeFrom) && selected <= uint64Of(entry.rangeTo)) {
          held.push(this.conditionText(entry, true));
        } else {
          excluded = true;
          const now = this.selectorName(entry.address) + ' ' + bitsText(maskOf(entry)) + ' = ' + selected;
          if (!actual.includes(now)) actual.push(now);
        }
      }
      needs.push(quoted(variant.name) + ' needs ' + (conditions.length ? conditions.join(' and ') : 'nothing'));
      if (excluded) continue;
      if (unknown.length === 0) {
        matched.push(variant);
        matchedBecause.push(held.join(' and '));
        continue;
      }
      const texts = variant.impactedBy.filter((e) => !this.known.has(e.address))
        .map((e) => this.conditionText(e, unknown.length > 1));
      choice.candidates.push({
        variant: variant.name, selectors: unknown,
        requirement: 'set ' + unknown.join(', ') + ' first: ' + texts.join(' and ') + ' selects ' +
          quoted(variant.name)
      });
    }
    if (choice.candidates.length) {
      for (let i = matched.length - 1; i >= 0; --i)
        choice.candidates.unshift({
          variant: matched[i].name, selectors: [], requirement: quoted(matched[i].name) + ' applies already'
        });
      choice.outcome = 'undecided';
      const selectors = [];
      for (const candidate of choice.candidates) {
        for (const selector of candidate.selectors) {
          if (!selectors.includes(selector)) selectors.push(selector);
        }
      }
      choice.reason = 'variant of ' + reg.name + ' not decided: set ' + selectors.join(', ') + ' first';
      return choice;
    }
    if (matched.length === 0) {
      choice.reason = 'no variant of ' + reg.name + ' applies with ' + actual.join(' and ') + ': ' +
        needs.join('; ');
      return choice;
    }
    choice.outcome = 'decided';
    choice.variant = matched[0];
    choice.reason = matchedBecause[0] ? matchedBecause[0] + ' selects ' + quoted(matched[0].name) : '';
    if (matched.length > 1) choice.reason += '; several variants apply, the first is used';
    return choice;
  }

  // The register's value taken apart by the given variant (null: none, only the uncovered bits).
  decodeWith(reg, value, variant) {
    const decoding = {
      name: reg.name, address: reg.address, size: reg.size, value: value, variant: null, fields: [],
      uncovered: value, warnings: []
    };
    const allowed = sizeMask(reg.size);
    if (reg.size > 64)
      decoding.warnings.push(reg.name + ' is ' + reg.size + ' bits wide: only its low 64 bits are decoded');
    if (value & ~allowed & ALL64)
      decoding.warnings.push("the value has bits above the register's " + reg.size + ' bits: ' +
        hexValue(value & ~allowed & ALL64, 64));
    if (!variant) return decoding;
    decoding.variant = variant;
    let covered = 0n;
    for (const field of variant.fields) {
      const mask = maskOf(field);
      const out = {
        name: field.name, shift: field.shift, mask: mask, raw: shiftedDown(value, mask, field.shift), text: '',
        unit: '', kind: '', inRange: true, range: '', alerts: (field.alerts || []).slice(), field: field
      };
      if (shiftUsable(field.shift)) covered |= mask;
      describe(field, out);
      if (!shiftUsable(field.shift))
        decoding.warnings.push(out.name + ' has the shift ' + field.shift + ', outside 0 to 63: read as 0');
      if (mask & ~allowed & ALL64)
        decoding.warnings.push(out.name + " has bits above the register's " + reg.size + ' bits');
      if (!out.inRange) decoding.warnings.push(rangeProblem(out.name, out));
      if (out.raw !== 0n) {
        for (const alert of out.alerts) decoding.warnings.push(out.name + ' is set: ' + alert);
      }
      decoding.fields.push(out);
    }
    decoding.uncovered = value & ~covered & ALL64;
    return decoding;
  }

  decode(reg, value) {
    const choice = this.chooseVariant(reg);
    const decoding = this.decodeWith(reg, value, choice.variant);
    decoding.choice = choice;
    return decoding;
  }
}

// One decoding as an entry of "kivtool decode --json"'s "registers" array.
function decodingJson(decoding) {
  const object = {
    name: decoding.name,
    address: decoding.address,
    size: decoding.size,
    value: hexValue(decoding.value, decoding.size),
    variant: decoding.variant ? decoding.variant.name : null,
    reason: decoding.choice ? decoding.choice.reason : '',
    fields: decoding.fields.map((f) => ({
      name: f.name, shift: f.shift, mask: hexValue(f.mask, 0), bits: bitsText(f.mask), raw: Number(f.raw),
      rawHex: hexValue(f.raw, 0), text: f.text, unit: f.unit, kind: f.kind, inRange: f.inRange, range: f.range,
      alerts: f.alerts
    })),
    uncovered: hexValue(decoding.uncovered, decoding.size),
    warnings: decoding.warnings
  };
  if (decoding.choice && decoding.choice.outcome === 'undecided') {
    object.candidates = decoding.choice.candidates.map((c) => c.variant);
    object.requirements = decoding.choice.candidates.map((c) => c.requirement);
  }
  return object;
}
