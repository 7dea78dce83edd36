-- Sample schema: every table and column the program reads or writes, with keys and indexes.
--
-- Runs against the current database and creates nothing else. Plain CREATE TABLE on purpose: on a
-- database that already holds these tables the first statement fails and nothing is touched.
--
-- A shop's real tables have many more columns; the ones here are what the program uses, plus the key
-- a table needs. Columns other than keys are nullable where a shop's data has gaps, and every column
-- has a default, because the program's inserts list only the columns they fill.
--
-- One character set and one collation for all text columns: keys of different tables are compared
-- with each other, and a join between two collations fails or does without its index.

SET NAMES utf8mb4;

-- Sales documents -----------------------------------------------------------------------------------

CREATE TABLE orcamento (
  id            INT          NOT NULL AUTO_INCREMENT,
  nrpedido      INT          NOT NULL DEFAULT 0,
  TipoOperacao  VARCHAR(1)   NOT NULL DEFAULT 'D',
  situacaoorc   VARCHAR(1)   NOT NULL DEFAULT 'A',
  codigocli     VARCHAR(10)           DEFAULT NULL,
  placa         VARCHAR(8)            DEFAULT NULL,
  nomevendedor  VARCHAR(40)           DEFAULT NULL,
  Vendedor      INT                   DEFAULT NULL,
  dataabertura  DATE                  DEFAULT NULL,
  databaixa     DATE                  DEFAULT NULL,
  Horario       TIME                  DEFAULT NULL,
  status        VARCHAR(1)            DEFAULT NULL,
  codigo        VARCHAR(20)  NOT NULL DEFAULT '',
  quantidade    DECIMAL(12,3)         DEFAULT 0.000,
  unitario      DECIMAL(12,2)         DEFAULT 0.00,
  totalped      DECIMAL(14,2)         DEFAULT 0.00,
  UnitarioPAF   DECIMAL(12,2)         DEFAULT 0.00,
  TotalPaf      DECIMAL(14,2)         DEFAULT 0.00,
  PRIMARY KEY (id),
  -- one document: conversion, price check, stock test, closing
  KEY orcamento_documento (nrpedido, TipoOperacao),
  -- the two listings: a narrow slice of recent open documents out of years of closed ones
  KEY orcamento_listagem (TipoOperacao, situacaoorc, dataabertura),
  -- open lines of one product
  KEY orcamento_produto (codigo, TipoOperacao, situacaoorc)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

CREATE TABLE orcamento_controle (
  NrPedido      INT          NOT NULL DEFAULT 0,
  tipoOperacao  VARCHAR(1)   NOT NULL DEFAULT 'D',
  NrCaixa       INT                   DEFAULT NULL,
  Status        VARCHAR(1)            DEFAULT NULL,
  Fechamento    DATETIME              DEFAULT NULL,
  PRIMARY KEY (NrPedido, tipoOperacao)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

CREATE TABLE observacao (
  id            INT          NOT NULL AUTO_INCREMENT,
  nrpedido      INT          NOT NULL DEFAULT 0,
  tipoOperacao  VARCHAR(1)   NOT NULL DEFAULT 'D',
  texto         VARCHAR(255)          DEFAULT NULL,
  PRIMARY KEY (id),
  KEY observacao_documento (nrpedido, tipoOperacao)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

CREATE TABLE Orcamento_Troca (
  id            INT          NOT NULL AUTO_INCREMENT,
  codigo        VARCHAR(20)  NOT NULL DEFAULT '',
  codigocli     VARCHAR(10)           DEFAULT NULL,
  Vendedor      INT                   DEFAULT NULL,
  quantidade    DECIMAL(12,3)         DEFAULT 0.000,
  pcfabrica     DECIMAL(12,2)         DEFAULT 0.00,
  situacaoorc   VARCHAR(1)   NOT NULL DEFAULT 'A',
  databaixa     DATE                  DEFAULT NULL,
  PRIMARY KEY (id),
  KEY orcamento_troca_baixa (situacaoorc, databaixa)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

-- Customers, sellers, payment methods, company ------------------------------------------------------

CREATE TABLE clientes (
  codigo         VARCHAR(10)  NOT NULL,
  nome           VARCHAR(60)           DEFAULT NULL,
  fantasia       VARCHAR(60)           DEFAULT NULL,
  cidade         VARCHAR(40)           DEFAULT NULL,
  prazo          INT                   DEFAULT NULL,
  formapg        VARCHAR(30)           DEFAULT NULL,
  colunapreco    VARCHAR(1)            DEFAULT NULL,
  tabelas_preco  VARCHAR(4)            DEFAULT NULL,
  CNPJ_CPF       VARCHAR(20)           DEFAULT NULL,
  ativocad       VARCHAR(1)            DEFAULT 'S',
  PRIMARY KEY (codigo),
  -- not unique: shops do hold a document twice; it ties fiscal movements to customers
  KEY clientes_documento (CNPJ_CPF)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

CREATE TABLE vendedores (
  codigovend  INT           NOT NULL,
  vendedor    VARCHAR(40)            DEFAULT NULL,
  Ativo       VARCHAR(1)             DEFAULT 'S',
  ComissEsp1  DECIMAL(5,2)           DEFAULT NULL,
  ComissEsp2  DECIMAL(5,2)           DEFAULT NULL,
  PRIMARY KEY (codigovend)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

CREATE TABLE Finalizadoras (
  ID         INT          NOT NULL,
  Descricao  VARCHAR(30)  NOT NULL DEFAULT '',
  avista     VARCHAR(1)            DEFAULT NULL,
  PRIMARY KEY (ID),
  UNIQUE KEY finalizadoras_descricao (Descricao)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

CREATE TABLE empresa (
  id                          INT          NOT NULL DEFAULT 1,
  contadorPV                  INT          NOT NULL DEFAULT 0,
  ultpedido                   INT          NOT NULL DEFAULT 0,
  UltimaPV                    INT                   DEFAULT NULL,
  ContaCTB1                   VARCHAR(160)          DEFAULT NULL,
  PAF_ECF                     VARCHAR(3)            DEFAULT NULL,
  ReservaAtualizaGridEstoque  VARCHAR(3)            DEFAULT NULL,
  Titulom1                    VARCHAR(30)           DEFAULT NULL,
  Titulom2                    VARCHAR(30)           DEFAULT NULL,
  Titulom3                    VARCHAR(30)           DEFAULT NULL,
  Titulom4                    VARCHAR(30)           DEFAULT NULL,
  PRIMARY KEY (id)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

-- Products and stock --------------------------------------------------------------------------------

CREATE TABLE produtos (
  codfabr           VARCHAR(20)   NOT NULL,
  descricao         VARCHAR(120)           DEFAULT NULL,
  aplicacao         VARCHAR(120)           DEFAULT NULL,
  observacao        VARCHAR(255)           DEFAULT NULL,
  ativo             VARCHAR(1)             DEFAULT 'S',
  Venda             DECIMAL(12,2)          DEFAULT 0.00,
  Venda2            DECIMAL(12,2)          DEFAULT 0.00,
  Venda3            DECIMAL(12,2)          DEFAULT 0.00,
  Venda4            DECIMAL(12,2)          DEFAULT 0.00,
  ValidadePromo     DATE                   DEFAULT '1901-01-01',
  ValidadePromo2    DATE                   DEFAULT '1901-01-01',
  quantidade        DECIMAL(12,3)          DEFAULT 0.000,
  quantidade2       DECIMAL(12,3)          DEFAULT 0.000,
  Ultima_Saida      DATE                   DEFAULT '1901-01-01',
  Ultima_Alteracao  DATE                   DEFAULT '1901-01-01',
  -- not nullable: the counter is moved by Nitem+1, which a NULL would swallow for good
  Nitem             INT           NOT NULL DEFAULT 0,
  Localizacao       VARCHAR(20)            DEFAULT NULL,
  Unidade           VARCHAR(3)             DEFAULT NULL,
  LinhaProd         INT                    DEFAULT 0,
  PRIMARY KEY (codfabr)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

CREATE TABLE FichaTecnica (
  id          INT            NOT NULL AUTO_INCREMENT,
  codigo      VARCHAR(20)    NOT NULL DEFAULT '',
  codigoprod  VARCHAR(20)    NOT NULL DEFAULT '',
  quantidade  DECIMAL(12,3)           DEFAULT 0.000,
  PRIMARY KEY (id),
  KEY fichatecnica_composto (codigoprod)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

CREATE TABLE logestoque (
  id          INT            NOT NULL AUTO_INCREMENT,
  data        DATE                    DEFAULT NULL,
  hora        TIME                    DEFAULT NULL,
  usuario     VARCHAR(60)             DEFAULT NULL,
  tela        VARCHAR(100)            DEFAULT NULL,
  codproduto  VARCHAR(20)             DEFAULT NULL,
  qtdLoja     DECIMAL(12,3)           DEFAULT 0.000,
  PRIMARY KEY (id)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

-- Receivables and cash book -------------------------------------------------------------------------

CREATE TABLE areceber (
  id          INT            NOT NULL AUTO_INCREMENT,
  CodigoCli   VARCHAR(10)             DEFAULT NULL,
  NomeCli     VARCHAR(60)             DEFAULT NULL,
  Emissao     DATE                    DEFAULT NULL,
  Vencto      DATE                    DEFAULT NULL,
  Valor       DECIMAL(14,2)           DEFAULT 0.00,
  Historico   VARCHAR(100)            DEFAULT NULL,
  Nr_Pedido   INT                     DEFAULT NULL,
  DataBaixa   DATE                    DEFAULT '1901-01-01',
  ValorPago   DECIMAL(14,2)           DEFAULT 0.00,
  SitBaixa    VARCHAR(1)              DEFAULT 'A',
  TipoPag     VARCHAR(30)             DEFAULT NULL,
  TipoCartao  VARCHAR(10)             DEFAULT NULL,
  CodigoVend  INT                     DEFAULT NULL,
  CodigoMec   INT                     DEFAULT NULL,
  ContaCTB    VARCHAR(20)             DEFAULT NULL,
  PRIMARY KEY (id)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

CREATE TABLE caixa (
  id          INT            NOT NULL AUTO_INCREMENT,
  cd_cta      VARCHAR(20)             DEFAULT NULL,
  DataCx      DATE                    DEFAULT NULL,
  Historico   VARCHAR(100)            DEFAULT NULL,
  Valor       DECIMAL(14,2)           DEFAULT 0.00,
  Finaliza1   VARCHAR(30)             DEFAULT NULL,
  ValorFin1   DECIMAL(14,2)           DEFAULT 0.00,
  CodigoLanc  VARCHAR(30)             DEFAULT NULL,
  NrCaixa     INT                     DEFAULT NULL,
  USUARIO     VARCHAR(30)             DEFAULT NULL,
  PRIMARY KEY (id)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

-- Fiscal documents ----------------------------------------------------------------------------------

CREATE TABLE nfsaida (
  nrnf         INT          NOT NULL,
  SerieNF      VARCHAR(3)   NOT NULL DEFAULT '1',
  CodVendedor  INT          NOT NULL DEFAULT 0,
  razsoc       VARCHAR(60)           DEFAULT NULL,
  PRIMARY KEY (nrnf, SerieNF)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

CREATE TABLE movsaient (
  id            INT            NOT NULL AUTO_INCREMENT,
  nr_nf         INT            NOT NULL DEFAULT 0,
  serienf       VARCHAR(3)     NOT NULL DEFAULT '1',
  dataemissao   DATE                    DEFAULT NULL,
  entrsai       VARCHAR(1)              DEFAULT NULL,
  cancelado     VARCHAR(1)              DEFAULT 'N',
  cfop          VARCHAR(4)              DEFAULT NULL,
  codigo        VARCHAR(20)             DEFAULT NULL,
  descricao     VARCHAR(120)            DEFAULT NULL,
  quantunit     DECIMAL(12,3)           DEFAULT 0.000,
  totalvenda    DECIMAL(14,2)           DEFAULT 0.00,
  vlr_tot_item  DECIMAL(14,2)           DEFAULT 0.00,
  cnpj_cpf      VARCHAR(20)             DEFAULT NULL,
  PRIMARY KEY (id),
  -- every report asks for one direction within a period
  KEY movsaient_periodo (dataemissao, entrsai)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

-- Sales targets -------------------------------------------------------------------------------------

CREATE TABLE metavendedoritem (
  ID             INT            NOT NULL AUTO_INCREMENT,
  CodVendedor    INT            NOT NULL DEFAULT 0,
  CodigoProduto  VARCHAR(20)    NOT NULL DEFAULT '',
  Quantidade     DECIMAL(12,3)           DEFAULT 0.000,
  Vendido        DECIMAL(12,3)           DEFAULT 0.000,
  TotalVendas    DECIMAL(14,2)           DEFAULT 0.00,
  QtdDevolucao   DECIMAL(12,3)           DEFAULT 0.000,
  PRIMARY KEY (ID),
  UNIQUE KEY metavendedoritem_item (CodVendedor, CodigoProduto)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

-- Report staging ------------------------------------------------------------------------------------

-- The two staging tables share one generic column set. Data1 is a text: the commission report fills it
-- with a date and the seller statement with dd/mm/yyyy, and a DATE column refuses the latter on a strict
-- server and stores a zero date on the others. The id keeps the rows in the order they were written,
-- which is the order of the printed page.
--
-- They are scratch tables: nothing in them outlives its report, and an engine that keeps no log writes them
-- several times faster. MariaDB takes the last ENGINE, MySQL does not read what stands in /*M! */. No
-- statement looks a row of relat2 up by its code, so an index there would only cost.

CREATE TABLE relat (
  id       INT            NOT NULL AUTO_INCREMENT,
  Codigo1  VARCHAR(100)            DEFAULT NULL,
  Codigo2  VARCHAR(100)            DEFAULT NULL,
  Texto1   VARCHAR(255)            DEFAULT NULL,
  Texto2   VARCHAR(255)            DEFAULT NULL,
  Texto3   VARCHAR(255)            DEFAULT NULL,
  Texto4   VARCHAR(255)            DEFAULT NULL,
  Texto5   VARCHAR(255)            DEFAULT NULL,
  Texto6   VARCHAR(255)            DEFAULT NULL,
  Texto7   VARCHAR(255)            DEFAULT NULL,
  Valor1   DECIMAL(15,2)           DEFAULT NULL,
  Valor2   DECIMAL(15,2)           DEFAULT NULL,
  Valor3   DECIMAL(15,2)           DEFAULT NULL,
  Valor4   DECIMAL(15,2)           DEFAULT NULL,
  Valor5   DECIMAL(15,2)           DEFAULT NULL,
  Valor6   DECIMAL(15,2)           DEFAULT NULL,
  Valor7   DECIMAL(15,2)           DEFAULT NULL,
  Valor8   DECIMAL(15,2)           DEFAULT NULL,
  Valor9   DECIMAL(15,2)           DEFAULT NULL,
  Quant    DECIMAL(15,3)           DEFAULT NULL,
  Data1    VARCHAR(10)             DEFAULT NULL,
  PRIMARY KEY (id),
  KEY relat_codigo1 (Codigo1)
) ENGINE=MyISAM /*M! ENGINE=Aria TRANSACTIONAL=0 */
  DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;

CREATE TABLE relat2 (
  id       INT            NOT NULL AUTO_INCREMENT,
  Codigo1  VARCHAR(100)            DEFAULT NULL,
  Codigo2  VARCHAR(100)            DEFAULT NULL,
  Texto1   VARCHAR(255)            DEFAULT NULL,
  Texto2   VARCHAR(255)            DEFAULT NULL,
  Texto3   VARCHAR(255)            DEFAULT NULL,
  Texto4   VARCHAR(255)            DEFAULT NULL,
  Texto5   VARCHAR(255)            DEFAULT NULL,
  Texto6   VARCHAR(255)            DEFAULT NULL,
  Texto7   VARCHAR(255)            DEFAULT NULL,
  Valor1   DECIMAL(15,2)           DEFAULT NULL,
  Valor2   DECIMAL(15,2)           DEFAULT NULL,
  Valor3   DECIMAL(15,2)           DEFAULT NULL,
  Valor4   DECIMAL(15,2)           DEFAULT NULL,
  Valor5   DECIMAL(15,2)           DEFAULT NULL,
  Valor6   DECIMAL(15,2)           DEFAULT NULL,
  Valor7   DECIMAL(15,2)           DEFAULT NULL,
  Valor8   DECIMAL(15,2)           DEFAULT NULL,
  Valor9   DECIMAL(15,2)           DEFAULT NULL,
  Quant    DECIMAL(15,3)           DEFAULT NULL,
  Data1    VARCHAR(10)             DEFAULT NULL,
  PRIMARY KEY (id)
) ENGINE=MyISAM /*M! ENGINE=Aria TRANSACTIONAL=0 */
  DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;
