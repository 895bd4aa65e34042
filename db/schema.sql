-- The draw database. Index names carry their table's name (T_N) because
-- SQLite's index names are global; the program knows index N of table T.

-- Draws as the program keeps them.
CREATE TABLE Sorties (
  DateTirage DATE,
  numero1 SMALLINT,
  numero2 SMALLINT,
  numero3 SMALLINT,
  numero4 SMALLINT,
  numero5 SMALLINT,
  NumeroChance SMALLINT
);
CREATE INDEX Sorties_DateTirage ON Sorties (DateTirage ASC);

-- The player's own numbers.
CREATE TABLE MesNumeros (
  numero1 SMALLINT,
  numero2 SMALLINT,
  numero3 SMALLINT,
  numero4 SMALLINT,
  numero5 SMALLINT,
  NumeroChance SMALLINT
);

-- How often each group of 2 numbers came out together.
CREATE TABLE Groupe2 (
  Numeros TEXT,
  Sorties INTEGER
);
CREATE UNIQUE INDEX Groupe2_Numeros ON Groupe2 (Numeros);

-- How often each group of 3 numbers came out together.
CREATE TABLE Groupe3 (
  Numeros TEXT,
  Sorties INTEGER
);
CREATE UNIQUE INDEX Groupe3_Numeros ON Groupe3 (Numeros);

-- How often each group of 4 numbers came out together.
CREATE TABLE Groupe4 (
  Numeros TEXT,
  Sorties INTEGER
);
CREATE UNIQUE INDEX Groupe4_Numeros ON Groupe4 (Numeros);

-- How often each group of 5 numbers came out together.
CREATE TABLE Groupe5 (
  Numeros TEXT,
  Sorties INTEGER
);
CREATE UNIQUE INDEX Groupe5_Numeros ON Groupe5 (Numeros);

-- The operator's history, one line of its file a row, fields as read.
CREATE TABLE Kuvo (
  annee_numero_de_tirage TEXT,
  jour_de_tirage TEXT,
  date_de_tirage TEXT,
  date_de_forclusion TEXT,
  boule_1 SMALLINT,
  boule_2 SMALLINT,
  boule_3 SMALLINT,
  boule_4 SMALLINT,
  boule_5 SMALLINT,
  Numero_Chance SMALLINT,
  combinaison_gagnante_en_ordre_croissant TEXT,
  nombre_de_gagnant_au_rang1 TEXT,
  rapport_du_rang1 TEXT,
  nombre_de_gagnant_au_rang2 TEXT,
  rapport_du_rang2 TEXT,
  nombre_de_gagnant_au_rang3 TEXT,
  rapport_du_rang3 TEXT,
  nombre_de_gagnant_au_rang4 TEXT,
  rapport_du_rang4 TEXT,
  nombre_de_gagnant_au_rang5 TEXT,
  rapport_du_rang5 TEXT,
  nombre_de_gagnant_au_rang6 TEXT,
  rapport_du_rang6 TEXT,
  numero_jokerplus TEXT,
  devise TEXT
);
